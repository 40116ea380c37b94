#include "tools/common/CommandCall.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <stdexcept>

#include "catalog/Moment.h"
#include "dbus/VariantRecord.h"
#include "tools/common/Values.h"
#include "tools/common/Wire.h"

namespace {

/// The 32-bit numbers of which a record on the bus consists.
class RecordNumbers {
 public:
  void Add(const catalog::Reading& reading, const catalog::Scalar& scalar) {
    using Kind = catalog::Reading::Kind;
    if (reading.kind == Kind::kDate) {
      AddStruct<SystemTime::DateInfo>(catalog::ReadDate, std::get<std::string>(scalar));
    } else if (reading.kind == Kind::kClock) {
      AddStruct<SystemTime::TimeInfo>(catalog::ReadTime, std::get<std::string>(scalar));
    } else {
      numbers_.push_back(static_cast<int32_t>(std::get<int64_t>(scalar)));
    }
  }
  void AddUtc(int64_t seconds) {
    const auto moment = static_cast<time_t>(seconds);
    std::tm utc{};
    gmtime_r(&moment, &utc);
    numbers_ = {utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday, utc.tm_wday, utc.tm_hour, utc.tm_min, utc.tm_sec};
  }
  GVariant* Variant() const { return build_variant_data(numbers_.data(), numbers_.size() * sizeof(int32_t)); }

 private:
  template <class Struct>
  void AddStruct(bool (*read)(const std::string&, Struct*), const std::string& text) {
    Struct value{};
    read(text, &value);
    int32_t words[sizeof(Struct) / sizeof(int32_t)];
    std::memcpy(words, &value, sizeof value);
    numbers_.insert(numbers_.end(), std::begin(words), std::end(words));
  }

  std::vector<int32_t> numbers_;
};

GVariant* OnWire(char type, const catalog::Scalar& scalar) {
  if (type == 's') return g_variant_new_string(std::get<std::string>(scalar).c_str());
  const int64_t number = std::get<int64_t>(scalar);
  if (type == 'y') return g_variant_new_byte(static_cast<guchar>(number));
  if (type == 'b') return g_variant_new_boolean(number != 0);
  if (type == 'u') return g_variant_new_uint32(static_cast<guint32>(number));
  return g_variant_new_int32(static_cast<gint32>(number));
}

}  // namespace

std::vector<catalog::Scalar> ParseArguments(const catalog::Command& command, const std::vector<std::string>& words) {
  const catalog::View<catalog::Parameter> parameters = command.Parameters();
  std::size_t needed = 0;
  while (needed < parameters.size() && *parameters[needed].otherwise == '\0') ++needed;
  catalog::RequireArity(command.name, {needed, parameters.size()}, words.size());
  std::vector<catalog::Scalar> scalars;
  for (std::size_t i = 0; i < words.size(); ++i) {
    try {
      scalars.push_back(ParseValue(parameters[i].reading, words[i]));
    } catch (const std::invalid_argument& problem) {
      throw std::invalid_argument(std::string(parameters[i].name) + ": " + problem.what());
    }
    if (i < needed || scalars[i] == ParseValue(parameters[i].reading, parameters[i].otherwise)) continue;
    throw std::invalid_argument(std::string(parameters[i].name) + ": '" + words[i] + "' needs the library's client: " +
                                "from here there is only '" + parameters[i].otherwise + "'");
  }
  scalars.resize(std::min(needed, scalars.size()));  // the others do not travel
  return scalars;
}

GVariant* ArgumentsOf(const catalog::Command& command, const std::vector<catalog::Scalar>& scalars) {
  const GDBusMethodInfo& method = wire::MethodNamed(command.method);
  const catalog::View<catalog::Parameter> parameters = command.Parameters();
  std::vector<GLibPtr<GVariant>> arguments;
  const auto add = [&arguments](GVariant* argument) { arguments.emplace_back(g_variant_ref_sink(argument)); };
  if (wire::Count(method.in_args) == 1 && *method.in_args[0]->signature == 'v') {
    RecordNumbers record;
    const bool carplay = std::strcmp(command.function, "SetCarplayTimeSync") == 0;
    if (carplay) record.AddUtc(std::get<int64_t>(scalars[0]));
    for (std::size_t i = 0; i < scalars.size() && !carplay; ++i) record.Add(parameters[i].reading, scalars[i]);
    add(record.Variant());
  } else {
    for (std::size_t i = 0; i < scalars.size(); ++i) add(OnWire(*method.in_args[i]->signature, scalars[i]));
  }
  return wire::Tuple(arguments);
}
