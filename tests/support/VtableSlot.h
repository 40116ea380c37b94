/// Where a virtual function stands in its class's vtable, as the ABI encodes it in a pointer to member.
#pragma once

#include <cstdint>
#include <cstring>

/// 1 for the first virtual function behind the destructor, which takes two entries.
template <class Pointer>
int SlotOf(Pointer function) {
  std::intptr_t words[2];
  static_assert(sizeof words == sizeof function, "a pointer to member has an offset and an adjustment");
  std::memcpy(words, &function, sizeof words);
#if defined(__arm__) || defined(__aarch64__)
  const std::intptr_t offset = words[0];  // the adjustment's lowest bit says that it is virtual
#else
  const std::intptr_t offset = words[0] - 1;
#endif
  return static_cast<int>(offset / static_cast<std::intptr_t>(sizeof(void*))) - 1;
}
