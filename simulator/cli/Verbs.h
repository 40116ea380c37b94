/// What `hlx-simulator set`, `get` and the other verbs do with the running simulator. All throw VerbError.
#pragma once

#include <string>
#include <vector>

using Words = std::vector<std::string>;

/// NAME VALUE
void SetVerb(const Words& words, bool silent);

struct GetOptions {
  bool raw = false;  ///< numbers instead of words
  bool json = false;
};
/// Names of values or areas; all without one.
void GetVerb(const Words& words, const GetOptions& options);

/// SIGNAL ARGUMENT…
void EmitVerb(Words words);

/// Needs no running simulator. `kind`: "values" and so on, all when empty.
void ListVerb(const std::string& kind, bool markdown);

struct CallsOptions {
  std::string method;  ///< of this one only
  bool json = false;
  bool clear = false;
  bool wait = false;
  double seconds = 10;
};
void CallsVerb(const CallsOptions& options);

/// What is to go wrong, "list" or "clear"; `times`: how often, 0 without end.
void FaultVerb(const Words& words, unsigned int times);

/// "insert" KIND or DIRECTORY, or "remove"
void StickVerb(const Words& words);
struct PlayOptions {
  std::string file;  ///< or the name of a scenario
  double speed = 1;  ///< 0: as fast as the bus takes it
  bool loop = false;
  bool wait = false;  ///< until it has ended; a failed one is an error
};
void PlayVerb(const PlayOptions& options);
void StopVerb();
void StatusVerb(bool json);

/// "cold", "acc" or "reset"
void RebootVerb(const std::string& how);
