#!/usr/bin/env python3
"""Takes what the panel sends as a browser does, one update in each frame, until it is ended.

Usage: browser.py HOST:PORT TOKEN
"""
import http.client
import sys
import time

import websocket

FRAME_SECONDS = 1 / 60

connection = http.client.HTTPConnection(sys.argv[1])
connection.request("GET", f"/?token={sys.argv[2]}")
cookie = connection.getresponse().getheader("Set-Cookie").split(";")[0]
panel = websocket.create_connection(f"ws://{sys.argv[1]}/ws", cookie=cookie, suppress_origin=True)
panel.recv()
print("shown", flush=True)
while True:
    panel.send('{"type":"ready"}')
    panel.recv()
    time.sleep(FRAME_SECONDS)
