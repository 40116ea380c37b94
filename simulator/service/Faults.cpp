#include "simulator/service/Faults.h"

#include <gio/gio.h>

#include <algorithm>

#include "catalog/Catalog.h"
#include "simulator/model/Names.h"
#include "simulator/model/SignalTable.h"
#include "simulator/service/MethodTable.h"

using catalog::BadValue;
using On = Fault::On;
using Kind = Fault::Kind;
using Words = std::vector<std::string>;

namespace {

constexpr char kAny[] = "any";
constexpr int64_t kLongest = 86400;  // seconds

constexpr FaultForm kForms[] = {
    {On::kCall, Kind::kError, "error", "[NAME [TEXT]]",
     "the call is answered with a D-Bus error and has no consequence"},
    {On::kCall, Kind::kDelay, "delay", "MILLISECONDS", "the call has its consequence, and is answered, so much later"},
    {On::kCall, Kind::kHang, "hang", "", "the call is read and never answered"},
    {On::kCall, Kind::kDrop, "drop", "", "the call is answered and has no consequence"},
    {On::kSignal, Kind::kDrop, "drop", "", "the record changes, the signal does not come"},
    {On::kSignal, Kind::kDouble, "double", "", "the signal comes twice"},
    {On::kSignal, Kind::kDelay, "delay", "MILLISECONDS", "the signal comes so much later"},
    {On::kSignal, Kind::kReorder, "reorder", "", "the signal comes behind the next one"},
    {On::kService, Kind::kCrash, "crash", "", "the service's bus connection closes without a word"},
    {On::kService, Kind::kRestart, "restart", "SECONDS", "as crash; so much later the service is back"},
    {On::kService, Kind::kVanish, "vanish", "", "the service's name is released; its connection stays"},
    {On::kService, Kind::kHang, "hang", "", "nothing is answered or sent any more"},
    {On::kRecord, Kind::kFreeze, "freeze", "", "the record does not change any more; signals come"},
    {On::kRecord, Kind::kGarbage, "garbage", "", "every field of the record holds garbage"},
    {On::kSegment, Kind::kSmall, "small", "", "who attaches from now on finds a segment that is too small"},
    {On::kSegment, Kind::kMissing, "missing", "", "who attaches from now on finds no segment"},
    {On::kSegment, Kind::kMode, "mode", "MODE", "who attaches from now on finds these permission bits, octal"},
};

constexpr struct {
  const char* word;  ///< first on the line; empty: the name of the method is
  On on;
  bool has_name;      ///< that follows
  bool may_be_every;  ///< without a name, every one is meant
} kTargets[] = {{"", On::kCall, true, false},
                {"signal", On::kSignal, true, false},
                {"service", On::kService, false, false},
                {"record", On::kRecord, true, false},
                {"segment", On::kSegment, true, true}};

const auto& TargetOf(On on) { return kTargets[static_cast<std::size_t>(on)]; }

/// What the first word is about; any other word is a method's name.
const auto& TargetNamed(const std::string& word) {
  for (const auto& target : kTargets) {
    if (word == target.word) return target;
  }
  return TargetOf(On::kCall);
}

Words WordsOf(On on) {
  Words words;
  for (const FaultForm& form : kForms) {
    if (form.on == on) words.emplace_back(form.word);
  }
  return words;
}

/// What may stand for the name.
Words NamesFor(On on) {
  Words names = {kAny};
  if (on == On::kCall) {
    for (const MethodRow& method : Methods()) names.emplace_back(method.method);
  } else if (on == On::kSignal) {
    for (const catalog::Signal& signal : catalog::Signals()) names.emplace_back(signal.name);
  } else {
    for (const catalog::RecordInfo& info : catalog::Records()) names.emplace_back(info.name);
  }
  return names;
}

/// The name in the catalogue's spelling.
std::string KnownName(On on, const std::string& name) {
  if (name == kAny) return "";
  if (on == On::kSignal) return SignalNamed(name).name;
  if (on == On::kCall) return MethodNamed(name).method;
  Words records;
  for (const catalog::RecordInfo& info : catalog::Records()) {
    if (name == info.name) return name;
    records.emplace_back(info.name);
  }
  throw Unknown("record", name, records);
}

const FaultForm& FormNamed(On on, const std::string& word) {
  for (const FaultForm& form : kForms) {
    if (form.on == on && word == form.word) return form;
  }
  std::string right;
  for (const std::string& known : WordsOf(on)) right += (right.empty() ? "" : ", ") + known;
  throw BadValue("there is no fault '" + word + "' here; there are: " + right);
}

bool IsErrorName(const std::string& name) { return g_dbus_is_error_name(name.c_str()) != FALSE; }

unsigned int ModeOf(const std::string& text) {
  const bool octal = !text.empty() && text.size() <= 4 && text.find_first_not_of("01234567") == std::string::npos;
  if (!octal || std::stoul(text, nullptr, 8) > 0777) throw BadValue("'" + text + "' is no mode from 000 to 777");
  return static_cast<unsigned int>(std::stoul(text, nullptr, 8));
}

void ReadArguments(const FaultForm& form, const Words& words, Fault* fault) {
  const bool optional = *form.takes == '[';
  const std::size_t most = optional ? 2 : *form.takes == '\0' ? 0 : 1;
  if (words.size() > most || (!optional && words.size() < most)) throw BadValue("fault takes " + FormOf(form));
  if (form.kind == Kind::kError && !words.empty()) {
    if (!IsErrorName(words[0])) throw BadValue("'" + words[0] + "' is no name of a D-Bus error: it has dots, a.b.C");
    fault->error = words[0];
    if (words.size() > 1) fault->text = words[1];
  } else if (form.kind == Kind::kDelay) {
    fault->time = std::chrono::milliseconds(catalog::ParseWhole(words[0], 0, kLongest * 1000));
  } else if (form.kind == Kind::kRestart) {
    const catalog::Reading seconds = catalog::Decimal("s", 1).In(0, kLongest);
    fault->time = std::chrono::milliseconds(static_cast<int64_t>(std::get<double>(Parse(seconds, words[0])) * 1000));
  } else if (form.kind == Kind::kMode) {
    fault->mode = ModeOf(words[0]);
  }
}

}  // namespace

catalog::View<FaultForm> FaultForms() { return kForms; }

std::string FormOf(const FaultForm& form) {
  std::string text = TargetOf(form.on).word;
  if (TargetOf(form.on).has_name)
    text += form.on == On::kCall ? "METHOD" : form.on == On::kSegment ? " [NAME]" : " NAME";
  return text + " " + form.word + (*form.takes == '\0' ? "" : " ") + form.takes;
}

Words NextFaultWords(const Words& before) {
  const auto& target = before.empty() ? TargetOf(On::kCall) : TargetNamed(before[0]);
  const std::size_t given = before.size() - (*target.word == '\0' ? 0 : 1);
  Words words;
  const auto add = [&words](const Words& more) { words.insert(words.end(), more.begin(), more.end()); };
  if (target.has_name && given == 0) add(NamesFor(target.on));
  if (before.empty()) {
    for (const auto& other : kTargets) {
      if (*other.word != '\0') words.emplace_back(other.word);
    }
  }
  if (given == (target.has_name ? 1 : 0) || (target.may_be_every && given == 0)) add(WordsOf(target.on));
  return words;
}

Fault ParseFault(const Words& words, unsigned int times) {
  if (words.empty()) throw BadValue("fault takes what is to go wrong; see hlx-simulator list faults");
  Fault fault;
  Words rest = words;
  if (words == Words{"hang"}) rest = {"service", "hang"};
  const auto& target = TargetNamed(rest[0]);
  fault.on = target.on;
  if (*target.word != '\0') rest.erase(rest.begin());
  const Words kinds = WordsOf(fault.on);
  const bool every =
      target.may_be_every && !rest.empty() && std::find(kinds.begin(), kinds.end(), rest[0]) != kinds.end();
  if (target.has_name && !every) {
    if (rest.empty()) throw BadValue("fault " + words[0] + " takes a name; see hlx-simulator list faults");
    fault.name = KnownName(fault.on, rest[0]);
    rest.erase(rest.begin());
  }
  if (rest.empty()) throw BadValue("fault " + words[0] + " takes what is to go wrong; see hlx-simulator list faults");
  const FaultForm& form = FormNamed(fault.on, rest[0]);
  fault.kind = form.kind;
  rest.erase(rest.begin());
  ReadArguments(form, rest, &fault);
  if (times != 0 && fault.on != On::kCall && fault.on != On::kSignal) {
    throw BadValue("--times is for faults of methods and signals");
  }
  fault.left = times;
  for (const std::string& word : words) fault.words += (fault.words.empty() ? "" : " ") + word;
  return fault;
}

bool Faults::Strikes(On on, std::string_view name, Fault* fault) {
  const auto found = std::find_if(faults_.begin(), faults_.end(), [&](const Fault& candidate) {
    return candidate.on == on && (candidate.name.empty() || candidate.name == name);
  });
  if (found == faults_.end()) return false;
  *fault = *found;
  if (found->left != 0 && --found->left == 0) faults_.erase(found);
  return true;
}

void Faults::Replace(Fault fault) {
  faults_.erase(std::remove_if(faults_.begin(), faults_.end(),
                               [&](const Fault& old) { return old.on == fault.on && old.name == fault.name; }),
                faults_.end());
  faults_.push_back(std::move(fault));
}

bool Faults::Has(On on) const {
  return std::any_of(faults_.begin(), faults_.end(), [on](const Fault& fault) { return fault.on == on; });
}

void Faults::Remove(On on) {
  faults_.erase(std::remove_if(faults_.begin(), faults_.end(), [on](const Fault& fault) { return fault.on == on; }),
                faults_.end());
}
