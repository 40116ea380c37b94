#include "simulator/model/UnitRecord.h"

#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "data/SharedField.h"

namespace {

constexpr int kMode = 0666;

/// In the pieces in which fields are read: none is ever seen half.
template <class Piece>
void CopyPieces(const void* from, void* to, std::size_t begin, std::size_t end) {
  for (std::size_t i = begin; i < end; ++i) {
    HLXSystemData::Store(static_cast<Piece*>(to)[i], HLXSystemData::Load(static_cast<const Piece*>(from)[i]));
  }
}

}  // namespace

UnitRecord::UnitRecord(const catalog::RecordInfo& info, Initialiser initialise)
    : info_(info), initialise_(std::move(initialise)), segment_(Map(info.size, IPC_CREAT | kMode)), state_(segment_) {
  initialise_(state_);
}

int UnitRecord::Find(std::size_t size, int flags) const { return shmget(static_cast<key_t>(info_.key), size, flags); }

void* UnitRecord::Map(std::size_t size, int flags) const {
  const int id = Find(size, flags);
  void* const address = id == -1 ? nullptr : shmat(id, nullptr, 0);
  if (id != -1 && reinterpret_cast<intptr_t>(address) != -1) return address;
  char text[200];
  std::snprintf(text, sizeof text, "cannot have the %s segment (key 0x%llX, %zu bytes): %s", info_.name, info_.key,
                size, std::strerror(errno));
  throw std::runtime_error(text);
}

void UnitRecord::Copy(const void* from, void* to) const {
  const std::size_t words = info_.size / sizeof(uint64_t);
  CopyPieces<uint64_t>(from, to, 0, words);
  CopyPieces<uint32_t>(from, to, words * 2, info_.size / sizeof(uint32_t));
}

void UnitRecord::InitialiseAnew() {
  const std::vector<uint64_t> zeros(info_.size / sizeof(uint64_t) + 1);
  Copy(zeros.data(), state_);
  initialise_(state_);
  Publish();
}

void UnitRecord::Freeze() {
  if (IsApart()) return;
  apart_.assign(info_.size / sizeof(uint64_t) + 1, 0);
  Copy(state_, apart_.data());
  state_ = apart_.data();
}

void UnitRecord::Garble() {
  Freeze();
  std::vector<uint64_t> garbage(apart_.size());
  uint64_t word = info_.key;
  for (uint64_t& piece : garbage) piece = word = word * 6364136223846793005U + 1442695040888963407U;
  Copy(garbage.data(), segment_);
  for (void* const segment : orphans_) Copy(garbage.data(), segment);
}

void UnitRecord::Recover() {
  if (!IsApart()) return;
  Copy(state_, segment_);
  state_ = segment_;
  Publish();
}

void UnitRecord::Remove() {
  const int id = Find(0, 0);
  if (id != -1) shmctl(id, IPC_RMID, nullptr);
  if (std::find(orphans_.begin(), orphans_.end(), segment_) == orphans_.end()) orphans_.push_back(segment_);
}

void UnitRecord::ReplaceSmall() {
  Remove();
  Find(info_.size / 2, IPC_CREAT | kMode);
}

void UnitRecord::SetMode(unsigned int mode) {
  shmid_ds status{};
  const int id = Find(0, 0);
  if (id == -1 || shmctl(id, IPC_STAT, &status) != 0) return;
  status.shm_perm.mode = static_cast<decltype(status.shm_perm.mode)>(mode);
  shmctl(id, IPC_SET, &status);
}

void UnitRecord::Restore() {
  if (std::find(orphans_.begin(), orphans_.end(), segment_) == orphans_.end()) return SetMode(kMode);
  // An application may have made the missing one meanwhile: then it is served from here on.
  const int id = Find(0, 0);
  shmid_ds status{};
  if (id != -1 && (shmctl(id, IPC_STAT, &status) != 0 || status.shm_segsz < info_.size)) shmctl(id, IPC_RMID, nullptr);
  void* const segment = Map(info_.size, IPC_CREAT | kMode);
  Copy(state_, segment);
  if (!IsApart()) state_ = segment;
  segment_ = segment;
}
