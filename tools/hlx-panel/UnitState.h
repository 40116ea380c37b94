/// What the unit says: every value of the catalogue as it is now, and the events as they came. It only looks: records
/// are mapped read-only, signals are heard, and the library's time client is never made.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "catalog/Catalog.h"
#include "tools/common/Bus.h"
#include "tools/common/Events.h"

class UnitState {
 public:
  using Heard = std::function<void(const catalog::Event&)>;

  /// `changed` runs in the main loop when there may be something new; `heard` for every event.
  UnitState(const Bus& bus, std::function<void()> changed, Heard heard);
  UnitState(const UnitState&) = delete;
  UnitState& operator=(const UnitState&) = delete;
  ~UnitState();

  /// Looks at the records, often while somebody watches; nobody: not at all.
  void Watch(bool somebody);

  bool ServiceThere() const { return there_; }

  /// Grows with every change of a value.
  std::uint64_t Revision() const { return revision_; }
  /// `"power.acc":[1,"on"],…` of the values that changed after `revision`; all for 0.
  std::string ChangesAfter(std::uint64_t revision) const;

  /// A numbered list of JSON texts, of which the newest are kept.
  class Lines {
   public:
    void Add(std::string line);
    std::uint64_t End() const { return end_; }
    /// Those from `*next` on, joined by commas; `*next` is then End(). @return how many are no longer kept
    std::uint64_t After(std::uint64_t* next, std::string* joined) const;

   private:
    std::deque<std::string> kept_;
    std::uint64_t end_ = 0;
  };
  const Lines& EventLines() const { return events_; }

 private:
  struct Shown {
    catalog::Scalar scalar;
    std::string json = "[null,\"\"]";
    std::uint64_t revision = 0;
  };

  void Look();
  void Listen();
  static void OnLife(GObject* connection, GAsyncResult* result, gpointer self);
  void Hear(const catalog::Event& event);
  void Set(std::size_t index, catalog::Scalar scalar);

  const Bus& bus_;
  std::function<void()> changed_;
  Heard heard_;
  std::vector<Shown> shown_;  ///< one for each of catalog::Values()
  std::uint64_t revision_ = 1;
  Lines events_;
  bool there_ = false;
  std::unique_ptr<ServiceWatch> service_;
  std::unique_ptr<Events> listening_;
  bool asking_ = false;
  GLibPtr<GCancellable> cancel_{g_cancellable_new()};
  unsigned looks_ = 0;
  unsigned timer_ = 0;
};
