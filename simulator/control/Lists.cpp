#include "simulator/control/Lists.h"

#include "catalog/Catalog.h"
#include "simulator/control/Stick.h"
#include "simulator/model/Names.h"
#include "simulator/model/SignalTable.h"
#include "simulator/model/ValueNames.h"
#include "simulator/play/Script.h"
#include "simulator/service/Faults.h"
#include "simulator/service/MethodTable.h"

using catalog::BadValue;

namespace {

using Entries = std::vector<ListEntry>;

void AddValues(Entries& entries) {
  for (const NamedValue& value : HeldValues()) {
    entries.push_back({"value", value.name(), value.IsSettable() ? Allowed(value.reading()) : "read only"});
  }
}

/// "type level", with words where an argument has some.
std::string Taken(const catalog::Signal& signal) {
  std::string text;
  for (int i = 0; signal.arguments[i] != '\0'; ++i) {
    const catalog::Reading reading = ReadingOf(signal, i);
    text.append(text.empty() ? "" : " ")
        .append(InfoOf(signal).args[i]->name)
        .append(":")
        .append(1, signal.arguments[i]);
    for (const catalog::Word& word : reading.words)
      text.append(&word == reading.words.begin() ? "=" : "|").append(word.word);
  }
  return text;
}

void AddSignals(Entries& entries) {
  for (const catalog::Signal& signal : catalog::Signals()) entries.push_back({"signal", signal.name, Taken(signal)});
}

void AddMethods(Entries& entries) {
  for (const MethodRow& row : Methods()) {
    const std::string both = *row.changes != '\0' && *row.note != '\0' ? "; " : "";
    entries.push_back({"method", row.method, row.changes + both + row.note});
  }
}

void AddFaults(Entries& entries) {
  for (const FaultForm& form : FaultForms()) entries.push_back({"fault", FormOf(form), form.effect});
}

void AddSticks(Entries& entries) {
  for (const StickKind& kind : StickKinds()) entries.push_back({"stick", kind.name, kind.holds});
}

void AddScenarios(Entries& entries) {
  for (const auto& [name, title] : InstalledScenarios()) entries.push_back({"scenario", name, title});
}

constexpr struct {
  const char* kind;
  void (*add)(Entries&);
} kKinds[] = {{"value", AddValues}, {"signal", AddSignals},     {"method", AddMethods},
              {"fault", AddFaults}, {"scenario", AddScenarios}, {"stick", AddSticks}};

/// The values that a signal writes, or "nothing".
std::string Written(const catalog::Signal& signal) {
  std::string text;
  for (const catalog::Telling& telling : AnnouncedBy(signal)) {
    if (telling.value->IsBit()) continue;
    text.append(text.empty() ? "" : ", ").append("`").append(telling.value->FullName()).append("`");
    if (telling.argument < 0)
      text.append(NamedValue{telling.value, nullptr}.IsSettable() ? " (set before)" : " (the unit's own)");
  }
  return text;
}

}  // namespace

std::vector<ListEntry> ListOf(const std::string& kind) {
  Entries entries;
  std::vector<std::string> kinds;
  for (const auto& row : kKinds) {
    kinds.emplace_back(row.kind);
    if (kind.empty() || kind == row.kind) row.add(entries);
  }
  if (entries.empty()) throw UnknownAmong("kind", kind, kinds);
  return entries;
}

std::string MarkdownTable(const std::string& which) {
  std::string table;
  if (which == "methods") {
    table = "| method | sets | and |\n|---|---|---|\n";
    for (const MethodRow& row : Methods()) {
      std::string changes = row.changes;
      for (std::size_t at = 0; (at = changes.find(' ', at)) != std::string::npos; at += 4)
        changes.replace(at, 1, "`, `");
      if (!changes.empty()) changes.insert(0, 1, '`').push_back('`');
      table.append("| `")
          .append(row.method)
          .append("` | ")
          .append(changes)
          .append(" | ")
          .append(row.note)
          .append(" |\n");
    }
    return table;
  }
  if (which != "signals") throw BadValue("there is no table of '" + which + "': methods or signals");
  table = "| signal | arguments | writes |\n|---|---|---|\n";
  for (const catalog::Signal& signal : catalog::Signals()) {
    std::string taken = Taken(signal);
    for (std::size_t at = 0; (at = taken.find('|', at)) != std::string::npos; at += 2) taken.replace(at, 1, "\\|");
    table.append("| `")
        .append(signal.name)
        .append("` | ")
        .append(taken)
        .append(" | ")
        .append(Written(signal))
        .append(" |\n");
  }
  return table;
}
