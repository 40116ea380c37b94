// The listener registry.
#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <future>
#include <stdexcept>
#include <vector>

#include "IHLXListener.h"

namespace {

struct Listener {
  std::function<void()> during_event = [] {};
  int events = 0;
  void OnEvent(int value) {
    ++events;
    during_event();
    EXPECT_EQ(value, 42);
  }
};

class Registry : public IHLXListener<Listener> {
 public:
  void OnListenerAdded(Listener*) override { ++added; }
  void OnListenerRemoved(Listener*) override { ++removed; }
  void Event() { Notify(&Listener::OnEvent, 42); }
  int added = 0, removed = 0;
};

TEST(ListenerRegistry, HoldsEachListenerOnceAndRunsTheHooks) {
  Registry registry;
  Listener listener, stranger;
  registry.AddListener(nullptr);
  registry.RemoveListener(nullptr);
  EXPECT_EQ(registry.added + registry.removed, 0);
  registry.AddListener(&listener);
  registry.AddListener(&listener);
  EXPECT_EQ(registry.GetListenerCount(), 1U);
  EXPECT_EQ(registry.added, 2);
  registry.RemoveListener(&stranger);
  EXPECT_THAT(registry.GetListeners(), testing::ElementsAre(&listener));
  EXPECT_EQ(registry.removed, 1);
  registry.RemoveListener(&listener);
  EXPECT_EQ(registry.GetListenerCount(), 0U);
}

TEST(ListenerRegistry, NotifiesInAddressOrderUnderTheMutex) {
  Registry registry;
  std::vector<int> order;
  Listener listeners[3];
  for (const int i : {2, 0, 1}) {
    listeners[i].during_event = [&order, i] { order.push_back(i); };
    registry.AddListener(&listeners[i]);
  }
  registry.Event();
  EXPECT_THAT(order, testing::ElementsAre(0, 1, 2));
}

TEST(ListenerRegistry, AListenerAddedInACallbackIsCalledWhenItsTurnIsStillToCome) {
  for (const int adding : {0, 1}) {  // before the one that is last by then, and as that
    Registry registry;
    Listener listeners[3];
    listeners[adding].during_event = [&] { registry.AddListener(&listeners[2]); };
    registry.AddListener(&listeners[adding]);
    registry.Event();
    EXPECT_EQ(registry.GetListenerCount(), 2U);
    EXPECT_EQ(listeners[2].events, 1);
  }
}

TEST(ListenerRegistry, LockListenerWaitsForARunningCallback) {
  Registry registry;
  std::future<void> locked;
  Listener listener;
  listener.during_event = [&] {
    locked = std::async(std::launch::async, [&registry] {
      registry.LockListener();
      registry.UnlockListener();
    });
    EXPECT_EQ(locked.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
  };
  registry.AddListener(&listener);
  registry.Event();
  EXPECT_EQ(locked.wait_for(std::chrono::seconds(10)), std::future_status::ready);
}

TEST(ListenerRegistry, AThrowingListenerDoesNotKeepTheMutex) {
  Registry registry;
  Listener listener;
  listener.during_event = [] { throw std::runtime_error("listener"); };
  registry.AddListener(&listener);
  EXPECT_THROW(registry.Event(), std::runtime_error);
  registry.LockListener();  // would block for ever
  registry.UnlockListener();
}

}  // namespace
