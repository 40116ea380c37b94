#include "client/ipc/LastCallError.h"

#include <utility>

namespace {
thread_local GLibPtr<GError> newest;
}

void LastCallError::Keep(GLibPtr<GError> error) { newest = std::move(error); }

const char* LastCallError::Text() { return newest == nullptr ? nullptr : newest->message; }
