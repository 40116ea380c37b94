#include "client/ipc/LastCallError.h"

namespace {
thread_local GLibPtr<GError> newest;
}

void LastCallError::Clear() { newest.reset(); }

void LastCallError::Keep(GError* error) { newest.reset(error); }

const char* LastCallError::Text() { return newest == nullptr ? nullptr : newest->message; }
