/// One access to a field that another process may be reading or writing at the same time.
#pragma once

namespace HLXSystemData {

/// Reads `field` in one piece: the compiler can neither tear the access nor reuse an earlier value.
template <class T>
T Load(const T& field) {
  T value;
  __atomic_load(&field, &value, __ATOMIC_RELAXED);
  return value;
}

template <class T>
void Store(T& field, T value) {
  __atomic_store(&field, &value, __ATOMIC_RELAXED);
}

}  // namespace HLXSystemData
