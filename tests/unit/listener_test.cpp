// The listener registry.
#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "IHLXListener.h"

namespace {

struct Listener {
  std::vector<Listener*>* order = nullptr;
  bool throws = false;
  void OnEvent(int value) {
    if (throws) throw std::runtime_error("listener");
    order->push_back(this);
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
  std::vector<Listener*> order;
  Listener listeners[3] = {{&order}, {&order}, {&order}};
  for (const int i : {2, 0, 1}) registry.AddListener(&listeners[i]);
  registry.Event();
  EXPECT_THAT(order, testing::ElementsAre(&listeners[0], &listeners[1], &listeners[2]));
}

TEST(ListenerRegistry, AThrowingListenerDoesNotKeepTheMutex) {
  Registry registry;
  Listener listener{nullptr, true};
  registry.AddListener(&listener);
  EXPECT_THROW(registry.Event(), std::runtime_error);
  registry.LockListener();  // would block for ever
  registry.UnlockListener();
}

}  // namespace
