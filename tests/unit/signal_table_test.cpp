// Every row of the signal table against what the generated interface says of itself.
#include <gmock/gmock.h>

#include <set>
#include <string>

#include "catalog/Catalog.h"
#include "client/dispatch/SignalTable.h"
#include "dbus/GLibPtr.h"
#include "dbus_system.h"

namespace {

char TypeOf(GType type) {
  switch (type & ~G_SIGNAL_TYPE_STATIC_SCOPE) {
    case G_TYPE_UCHAR:
      return 'y';
    case G_TYPE_BOOLEAN:  // a gboolean is an int
    case G_TYPE_INT:
      return 'i';
    case G_TYPE_UINT:
      return 'u';
    case G_TYPE_DOUBLE:
      return 'd';
    default:
      return '?';
  }
}

TEST(SignalTable, MatchesTheInterface) {
  const GLibPtr<ComVornLinuxSystem> skeleton(com_vorn_linux_system_skeleton_new());
  std::set<guint> seen;
  for (const SignalRow& row : SignalTable()) {
    SCOPED_TRACE(row.name);
    const guint id = g_signal_lookup(row.name, TYPE_COM_VORN_LINUX_SYSTEM);
    ASSERT_NE(id, 0U);
    EXPECT_TRUE(seen.insert(id).second) << "connected twice";
    GSignalQuery query;
    g_signal_query(id, &query);
    std::string arguments;
    for (guint i = 0; i < query.n_params; ++i) arguments += TypeOf(query.param_types[i]);
    EXPECT_EQ(row.arguments, arguments);
  }
  EXPECT_EQ(seen.size(), catalog::Signals().size());
  EXPECT_STREQ(SignalTable()[75].name, "on_steel_mate_radar_info_changed_signal");
}

}  // namespace
