#include "simulator/model/SignalTable.h"

#include <cstring>

#include "catalog/Catalog.h"
#include "dbus_system.h"
#include "simulator/model/Names.h"
#include "simulator/model/Values.h"

using namespace catalog;

const Signal& SignalNamed(const std::string& name) {
  if (const Signal* const signal = FindSignal(name)) return *signal;
  throw Unknown("signal", name, NearestSignals(name));
}

const GDBusSignalInfo& InfoOf(const Signal& signal) {
  return *g_dbus_interface_info_lookup_signal(com_vorn_linux_system_interface_info(), signal.name);
}

std::vector<Scalar> ScalarsOf(const Signal& signal, const std::vector<GLibPtr<GVariant>>& arguments) {
  const std::size_t count = std::strlen(signal.arguments);
  RequireArity(signal.name, {count, count}, arguments.size());
  std::vector<Scalar> scalars;
  for (std::size_t i = 0; i < count; ++i) {
    const Reading reading = Widened(ReadingOf(signal, static_cast<int>(i)), signal.arguments[i]);
    try {
      scalars.push_back(Parse(reading, TextOf(arguments[i].get())));
    } catch (const BadValue& problem) {
      throw BadValue(std::string(signal.name) + ": " + InfoOf(signal).args[i]->name + ": " + problem.what());
    }
  }
  return scalars;
}

GLibPtr<GVariant> TupleOf(const Signal& signal, const std::vector<Scalar>& arguments) {
  std::vector<GVariant*> values;
  for (std::size_t i = 0; i < arguments.size(); ++i) values.push_back(VariantOf(arguments[i], signal.arguments[i]));
  return GLibPtr<GVariant>(g_variant_ref_sink(g_variant_new_tuple(values.data(), values.size())));
}
