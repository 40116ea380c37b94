// The listener registry.
#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "IHLXListener.h"

namespace {

struct Listener {
  std::function<void()> during_event = [] {};
  void OnEvent(int value) {
    during_event();
    EXPECT_EQ(value, 42);
  }
  void OnText(std::string text) { told = std::move(text); }  // NOLINT: as the interfaces take maps
  std::string told;
};

class Registry : public IHLXListener<Listener> {
 public:
  void OnListenerAdded(Listener*) override { ++added; }
  void OnListenerRemoved(Listener*) override { ++removed; }
  void Event() { Notify(&Listener::OnEvent, 42); }
  void Text(std::string text) { Notify(&Listener::OnText, std::move(text)); }
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

TEST(ListenerRegistry, GivesTheLastListenerWhatItNeedNotCopy) {
  Registry registry;
  Listener listeners[3];
  for (Listener& listener : listeners) registry.AddListener(&listener);
  const std::string text(100, 'x');
  std::string moved = text;
  const auto letters = reinterpret_cast<std::uintptr_t>(moved.data());
  registry.Text(std::move(moved));
  for (const Listener& listener : listeners) EXPECT_EQ(listener.told, text);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(listeners[2].told.data()), letters);
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
