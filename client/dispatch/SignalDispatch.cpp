#include "client/dispatch/SignalDispatch.h"

#include "client/dispatch/SignalTable.h"

SignalDispatch::~SignalDispatch() { StopDispatch(); }

void SignalDispatch::ConnectDBusSignal(ComVornLinuxSystem* proxy) {
  for (const SignalRow& row : SignalTable()) {
    g_signal_connect_data(proxy, row.name, row.handler, static_cast<ClientIpcAdapter*>(this), nullptr,
                          static_cast<GConnectFlags>(0));
  }
}
