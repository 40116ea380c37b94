#pragma once

#include <memory>

class EventLog;

/// Listens to all vehicle events.
std::shared_ptr<void> ListenToMisc(EventLog& log);
