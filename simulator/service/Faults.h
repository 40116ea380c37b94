/// What is to go wrong.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "catalog/Reading.h"

struct Fault {
  enum class On { kCall, kSignal, kService, kRecord, kSegment };
  enum class Kind {
    kError,
    kDelay,
    kHang,
    kDrop,
    kDouble,
    kReorder,
    kCrash,
    kRestart,
    kVanish,
    kFreeze,
    kGarbage,
    kSmall,
    kMissing,
    kMode,
  };

  On on = On::kCall;
  Kind kind = Kind::kError;
  std::string name;  ///< of the method, signal or record; empty: of every one
  std::chrono::milliseconds time{0};
  unsigned int mode = 0;                                ///< permission bits
  std::string error = "com.vorn.linux.Error.Injected";  ///< D-Bus name
  std::string text = "an injected fault";
  std::string words;      ///< as `fault list` shows it
  unsigned int left = 0;  ///< how often it will still strike; 0: without end
};

/// How a fault is asked for, for help and documents.
struct FaultForm {
  Fault::On on;
  Fault::Kind kind;
  const char* word;    ///< "delay"
  const char* takes;   ///< what follows the word: "MILLISECONDS"
  const char* effect;  ///< what happens
};
catalog::View<FaultForm> FaultForms();
/// "signal NAME delay MILLISECONDS"
std::string FormOf(const FaultForm& form);

/// What may stand next behind these words of `hlx-simulator fault`, for completion.
std::vector<std::string> NextFaultWords(const std::vector<std::string>& before);

/// From the words behind `hlx-simulator fault`; `times`: how often it strikes, 0 without end. @throws catalog::BadValue
/// that says what is wrong and what would be right
Fault ParseFault(const std::vector<std::string>& words, unsigned int times);

/// The faults of calls and signals that wait for their moment.
class Faults {
 public:
  /// Takes the place of the one with the same target.
  void Replace(Fault fault);
  /// The fault that strikes this method or signal now; kind and arguments are those of `*fault`. False for none.
  bool Strikes(Fault::On on, std::string_view name, Fault* fault);
  /// Whether one of this sort is in force.
  bool Has(Fault::On on) const;
  void Remove(Fault::On on);
  void Clear() { faults_.clear(); }
  const std::vector<Fault>& all() const { return faults_; }

 private:
  std::vector<Fault> faults_;
};
