/// Writes docs/reference.md: what every value, command and signal is called in each of the system's vocabularies.
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>

#include "catalog/Catalog.h"
#include "data/Settings.h"

using namespace catalog;

namespace {

void Line(const std::string& text = "") { std::puts(text.c_str()); }

void Row(std::initializer_list<std::string> cells) {
  std::string line = "|";
  for (const std::string& cell : cells) line.append(" ").append(cell).append(cell.empty() ? "|" : " |");
  Line(line);
}

void Head(std::initializer_list<std::string> cells) {
  Row(cells);
  std::string rule = "|";
  for (std::size_t i = 0; i < cells.size(); ++i) rule.append("---|");
  Line(rule);
}

std::string Code(const std::string& text) { return text.empty() ? "" : "`" + text + "`"; }

/// "one, two", each as code.
void Append(std::string& list, const std::string& item) { list.append(list.empty() ? "" : ", ").append(Code(item)); }

template <std::size_t N>
std::string List(const char* const (&items)[N]) {
  std::string list;
  for (const char* const item : items) {
    if (item != nullptr) Append(list, item);
  }
  return list;
}

const char* TypeName(FieldType type) {
  constexpr const char* kNames[] = {"", "u8", "s8", "u32", "s32", "f64", "text", "date", "time", "date and time"};
  return kNames[static_cast<std::size_t>(type)];
}

std::string ReadsAs(const Reading& reading) {
  std::string text;
  for (const Word& word : reading.words) {
    text.append(text.empty() ? "" : ", ").append(std::to_string(word.value)).append(" ").append(word.word);
  }
  if (reading.kind != Reading::Kind::kFlag && reading.kind != Reading::Kind::kNamed &&
      reading.kind != Reading::Kind::kText) {
    text.append(text.empty() ? "" : ", ")
        .append(Allowed(reading.words.empty() ? reading : Count().In(reading.least, reading.most)));
  }
  if (reading.kind == Reading::Kind::kText) text = "text";
  return *reading.unit == '\0' ? text : text + " " + reading.unit;
}

std::string FieldText(const Value& value) {
  if (!value.InRecord()) return "";
  const Field& field = value.field;
  const std::string bit = value.IsBit() ? ", bit " + std::to_string(field.bit) : "";
  const std::string size = field.type == FieldType::kText ? "[" + std::to_string(field.size) + "]" : "";
  return Code(std::string(InfoOf(field.record).name) + "." + field.name) + " @" + std::to_string(field.offset) + " " +
         TypeName(field.type) + size + bit;
}

std::string GetterText(const Value& value) {
  const Getter& getter = value.getter;
  return *getter.name == '\0' ? "" : Code(std::string(getter.name) + "(" + getter.argument + ")");
}

std::string SignalText(const Value& value) {
  const Announcement& announced = value.announced;
  if (*announced.signal == '\0') return "";
  std::string text = Code(announced.signal);
  if (announced.argument > 0) text += " argument " + std::to_string(announced.argument + 1);
  if (announced.when != Announcement::When::kAlways) {
    text += announced.when == Announcement::When::kFirstIsZero ? ", first 0" : ", first not 0";
  }
  return text;
}

std::string CallbackText(const char* signal_name) {
  const Signal* const signal = FindSignal(signal_name);
  return signal == nullptr ? "" : List(signal->callbacks);
}

std::string CommandsFor(const Value& value) {
  std::string list;
  for (const Command& command : Commands(value.area)) {
    for (const char* const name : command.changes) {
      if (name != nullptr && std::strcmp(name, value.name) == 0) Append(list, command.name);
    }
  }
  return list;
}

/// The saved setting behind a field, and what stands in for one that was never saved.
struct Origin {
  std::string saved;
  std::string otherwise;
};

Origin OriginOf(const Value& value) {
  for (const HLXSystemData::Setting& setting : HLXSystemData::Settings()) {
    const HLXSystemData::Place& place = setting.place;
    if (std::strcmp(place.record, InfoOf(value.field.record).name) != 0 || place.offset != value.field.offset) continue;
    std::string saved;
    if (setting.item.name != nullptr) {
      saved =
          Code(setting.item.name) + " " + std::to_string(setting.item.module) + "/" + std::to_string(setting.item.id);
    }
    if (setting.key == nullptr) return {saved, std::to_string(setting.stand_in)};
    return {saved, Code(setting.key) + (setting.stand_in > 1 ? ": " + std::to_string(setting.stand_in) + " or 0" : "")};
  }
  return {};
}

void WriteValues() {
  for (const Area area : kAreas) {
    Line("### " + std::string(NameOf(area)) + "\n");
    Head({"value", "label", "reads as", "record field", "getter", "signal", "event", "commands", "saved item", "else"});
    for (const Value& value : Values(area)) {
      const Origin origin = value.InRecord() && !value.IsBit() ? OriginOf(value) : Origin{};
      Row({Code(value.name), value.label, ReadsAs(value.reading), FieldText(value), GetterText(value),
           SignalText(value), CallbackText(value.announced.signal), CommandsFor(value), origin.saved,
           origin.otherwise});
    }
    Line();
  }
}

void WriteCommands() {
  Head({"command", "does", "arguments", "function", "D-Bus method", "changes", "signals that follow"});
  for (const Command& command : Commands()) {
    std::string parameters;
    for (const Parameter& parameter : command.Parameters()) {
      parameters.append(parameters.empty() ? "" : "; ").append(Code(parameter.name)).append(": ");
      parameters.append(Allowed(parameter.reading));
      if (*parameter.otherwise != '\0') parameters.append(", else ").append(parameter.otherwise);
    }
    Row({Code(std::string(NameOf(command.area)) + " " + command.name),
         command.help + std::string(command.asks_first ? " (asks first)" : ""), parameters, Code(command.function),
         Code(command.method), List(command.changes), List(command.follows)});
  }
}

void WriteSignals() {
  Head({"signal", "types", "callbacks", "values"});
  for (const Signal& signal : Signals()) {
    std::string values;
    for (const Telling& telling : AnnouncedBy(signal)) {
      if (!telling.value->IsBit()) Append(values, telling.value->FullName());
    }
    Row({Code(signal.name), Code(signal.arguments), List(signal.callbacks), values});
  }
}

}  // namespace

int main() {
  Line("# Reference\n");
  Line(
      "Written by `make-reference` from the catalogue; do not edit it. `cmake --build --preset debug --target "
      "reference`\n"
      "writes it anew.\n");
  Line(
      "A value has six names: the value's own (`power.acc`, in every tool), its field in a shared record, the getter "
      "of\n"
      "the public interface, the D-Bus signal that announces it, the listener's callback, and the command that changes "
      "it.\n");
  Line("## Values\n");
  Line(
      "Offsets are bytes in the record; a value without a field is known from its getter or from events alone. Of a "
      "signal\n"
      "the first argument is meant, unless another is named; a value that a signal announces without an argument of "
      "its\n"
      "own stands in the record by then. `saved item`: module and id of the setting that fills the field first; "
      "`else`:\n"
      "the configuration key, or the number, that stands in for one that was never saved.\n");
  WriteValues();
  Line("## Commands\n");
  WriteCommands();
  Line("\n## Signals\n");
  Line(
      "Types are those of D-Bus: y byte, b boolean, i and u 32-bit numbers, d double. Of several callbacks the CAN "
      "box's\n"
      "protocol or the record decides. A byte of flags also announces each of its bits.\n");
  WriteSignals();
  Line("\n## Fields without a value\n");
  Head({"field", "why"});
  for (const ReservedField& field : ReservedFields()) {
    Row({Code(std::string(InfoOf(field.record).name) + "." + field.name), field.why});
  }
}
