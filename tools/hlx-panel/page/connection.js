// The one WebSocket: a description first, then updates, each asked for when the page has drawn the one before.

const RETRY_MS = [250, 500, 1000, 2000];

export class Connection extends EventTarget {
  #socket = null;
  #waiting = new Map();
  #next = 1;
  #failures = 0;

  open() {
    const scheme = location.protocol === "https:" ? "wss" : "ws";
    const socket = new WebSocket(`${scheme}://${location.host}/ws`);
    this.#socket = socket;
    socket.onmessage = (message) => this.#receive(JSON.parse(message.data));
    socket.onclose = () => {
      for (const answer of this.#waiting.values()) answer({ ok: false, error: "the panel is gone" });
      this.#waiting.clear();
      this.#tell("lost");
      setTimeout(() => this.open(), RETRY_MS[Math.min(this.#failures++, RETRY_MS.length - 1)]);
    };
  }

  // Resolves to { ok, error?, took_ms?, event?, event_ms?, result? }; never rejects.
  request(what) {
    return new Promise((resolve) => {
      if (this.#socket?.readyState !== WebSocket.OPEN) {
        resolve({ ok: false, error: "the panel is gone" });
        return;
      }
      const id = this.#next++;
      this.#waiting.set(id, resolve);
      this.#socket.send(JSON.stringify({ ...what, id }));
    });
  }

  #receive(message) {
    if (message.type === "answer") {
      this.#waiting.get(message.id)?.(message);
      this.#waiting.delete(message.id);
      return;
    }
    this.#failures = 0;
    this.#tell(message.type, message);
    // A hidden page draws no frames; a timer keeps it up to date, if slowly.
    const next = () => this.#socket.readyState === WebSocket.OPEN && this.#socket.send('{"type":"ready"}');
    if (document.hidden) setTimeout(next, 500);
    else requestAnimationFrame(next);
  }

  #tell(type, detail) {
    this.dispatchEvent(new CustomEvent(type, { detail }));
  }
}
