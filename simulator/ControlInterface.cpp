#include "simulator/ControlInterface.h"

namespace {

constexpr char kDescription[] = R"(
<node>
  <interface name="com.vorn.linux.simulator">
    <method name="Emit">
      <arg name="signal" type="s" direction="in"/>
      <arg name="arguments" type="av" direction="in"/>
    </method>
    <method name="Set">
      <arg name="field" type="s" direction="in"/>
      <arg name="value" type="v" direction="in"/>
    </method>
  </interface>
</node>)";

void Emit(Unit& unit, GVariant* parameters) {
  const gchar* signal = nullptr;
  GVariantIter* iter = nullptr;
  g_variant_get(parameters, "(&sav)", &signal, &iter);
  std::vector<GLibPtr<GVariant>> arguments;
  while (GVariant* const boxed = g_variant_iter_next_value(iter)) {
    arguments.emplace_back(g_variant_get_variant(GLibPtr<GVariant>(boxed).get()));
  }
  g_variant_iter_free(iter);
  unit.AnnounceValues(signal, arguments);
}

void Set(Unit& unit, GVariant* parameters) {
  const gchar* name = nullptr;
  GVariant* boxed = nullptr;
  g_variant_get(parameters, "(&sv)", &name, &boxed);
  const GLibPtr<GVariant> value(boxed);
  const std::string text = TextOf(value.get());
  FieldNamed(name).StoreText(unit.records(), text);
  unit.Journal("set " + std::string(name) + " = " + text);
}

void OnControlCall(GDBusConnection* /*connection*/, const gchar* /*sender*/, const gchar* /*path*/,
                   const gchar* /*interface*/, const gchar* method, GVariant* parameters, GDBusMethodInvocation* call,
                   gpointer unit) {
  try {
    (std::string(method) == "Emit" ? Emit : Set)(*static_cast<Unit*>(unit), parameters);
    g_dbus_method_invocation_return_value(call, nullptr);
  } catch (const BadArgument& problem) {
    g_dbus_method_invocation_return_error_literal(call, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS, problem.what());
  }
}

constexpr GDBusInterfaceVTable kVTable = {OnControlCall, nullptr, nullptr, {}};

}  // namespace

void ExportControlInterface(GDBusConnection* connection, Unit& unit) {
  GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(kDescription, nullptr);
  GError* problem = nullptr;
  g_dbus_connection_register_object(connection, kControlPath, node->interfaces[0], &kVTable, &unit, nullptr, &problem);
  g_dbus_node_info_unref(node);
  if (problem != nullptr) throw std::runtime_error(GLibPtr<GError>(problem)->message);
}
