#include "tools/common/Wire.h"

#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "catalog/Words.h"
#include "dbus/VariantRecord.h"
#include "dbus_system.h"
#include "tools/common/Values.h"

namespace {

const GDBusInterfaceInfo& Interface() { return *com_vorn_linux_system_interface_info(); }

template <class Info>
std::vector<std::string> NamesOf(Info* const* infos) {
  std::vector<std::string> names;
  for (; *infos != nullptr; ++infos) names.emplace_back((*infos)->name);
  return names;
}

template <class Info>
const Info& Named(Info* const* infos, const char* kind, const std::string& name) {
  for (Info* const* info = infos; *info != nullptr; ++info) {
    if (name == (*info)->name) return **info;
  }
  throw std::invalid_argument("there is no " + (kind + (" '" + name + "'")) + DidYouMean(name, NamesOf(infos)));
}

GVariant* Record(const std::string& text) {
  std::vector<int32_t> numbers;
  for (std::size_t start = 0, end = 0; end != std::string::npos; start = end + 1) {
    end = text.find(',', start);
    numbers.push_back(static_cast<int32_t>(
        catalog::ParseWhole(text.substr(start, end - start), std::numeric_limits<int32_t>::min(), UINT32_MAX)));
  }
  return build_variant_data(numbers.data(), numbers.size() * sizeof(int32_t));
}

template <class T>
T Whole(const std::string& text) {
  return static_cast<T>(catalog::ParseWhole(text, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}

GVariant* Read(char type, const std::string& text) {
  using catalog::Parse;
  switch (type) {
    case 'y':
      return g_variant_new_byte(Whole<guchar>(text));
    case 'b':
      return g_variant_new_boolean(std::get<int64_t>(Parse(catalog::Flag(catalog::words::kOnOff), text)) != 0);
    case 'i':
      return g_variant_new_int32(Whole<gint32>(text));
    case 'u':
      return g_variant_new_uint32(Whole<guint32>(text));
    case 's':
      return g_variant_new_string(
          std::get<std::string>(Parse(catalog::Plain(catalog::Reading::Kind::kText), text)).c_str());
    default:
      return Record(text);
  }
}

}  // namespace

const GDBusMethodInfo& wire::MethodNamed(const std::string& name) { return Named(Interface().methods, "method", name); }
const GDBusSignalInfo& wire::SignalNamed(const std::string& name) { return Named(Interface().signals, "signal", name); }
std::vector<std::string> wire::MethodNames() { return NamesOf(Interface().methods); }
std::vector<std::string> wire::SignalNames() { return NamesOf(Interface().signals); }

GLibPtr<GVariant> wire::Argument(const GDBusArgInfo& info, const std::string& text) {
  try {
    return GLibPtr<GVariant>(g_variant_ref_sink(Read(*info.signature, text)));
  } catch (const catalog::BadValue& problem) {
    throw std::invalid_argument(info.name + (": " + std::string(problem.what())));
  }
}

GVariant* wire::Tuple(const std::vector<GLibPtr<GVariant>>& arguments) {
  std::vector<GVariant*> children;
  children.reserve(arguments.size());
  for (const GLibPtr<GVariant>& argument : arguments) children.push_back(argument.get());
  return g_variant_new_tuple(children.data(), children.size());
}

std::string wire::Describe(GDBusArgInfo* const* infos, GVariant* tuple) {
  std::string text;
  for (gsize i = 0; i < g_variant_n_children(tuple); ++i) {
    const GLibPtr<GVariant> value(g_variant_get_child_value(tuple, i));
    if (i != 0) text += ", ";
    if (infos != nullptr && *infos != nullptr) text.append((*infos++)->name) += "=";
    text += Compact(JsonOf(value.get()));
  }
  return text;
}

std::size_t wire::Count(GDBusArgInfo* const* infos) {
  std::size_t count = 0;
  while (infos != nullptr && infos[count] != nullptr) ++count;
  return count;
}

std::string wire::Signature(GDBusArgInfo* const* infos) {
  std::string signature = "(";
  for (; infos != nullptr && *infos != nullptr; ++infos) signature += (*infos)->signature;
  return signature + ")";
}
