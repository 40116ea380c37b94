/// One record of the unit: the segment that applications map, and the state that is published in it.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "catalog/Value.h"

/// Normally the state stands in the segment itself. A fault may part the two, or leave applications with a segment that
/// has no key any more; Publish() keeps such a segment up to date.
class UnitRecord {
 public:
  using Initialiser = std::function<void(void* record)>;

  /// Maps the segment, making it when there is none, and has the record initialised if nobody has done that.
  /// @throws std::runtime_error that names the segment that is not to be had
  UnitRecord(const catalog::RecordInfo& info, Initialiser initialise);
  UnitRecord(const UnitRecord&) = delete;
  UnitRecord& operator=(const UnitRecord&) = delete;

  const catalog::RecordInfo& info() const { return info_; }
  void* state() const { return state_; }

  /// Fills a record, unless its flag says that somebody has done that.
  void Initialise(void* record) const { initialise_(record); }
  /// Fills this one, in place, as if nobody had initialised it.
  void InitialiseAnew();

  /// Call after every change of the state.
  void Publish() {
    if (IsApart()) return;
    for (void* const segment : orphans_) Copy(state_, segment);
  }

  // What faults do to applications that are attached.
  void Freeze();   ///< nothing changes any more
  void Garble();   ///< every field holds garbage
  void Recover();  ///< ends both

  // What faults do to applications that attach later.
  void ReplaceSmall();              ///< they find a segment that is too small
  void Remove();                    ///< they find none
  void SetMode(unsigned int mode);  ///< they find these permission bits
  void Restore();                   ///< ends all three: the state is in the segment again

 private:
  int Find(std::size_t size, int flags) const;
  void* Map(std::size_t size, int flags) const;
  void Copy(const void* from, void* to) const;
  bool IsApart() const { return state_ == apart_.data(); }

  const catalog::RecordInfo info_;
  const Initialiser initialise_;
  void* segment_ = nullptr;  ///< the one that has the key
  void* state_ = nullptr;
  std::vector<uint64_t> apart_;  ///< the state while the segment does not follow it
  std::vector<void*> orphans_;   ///< segments without a key that applications may still have mapped
};
