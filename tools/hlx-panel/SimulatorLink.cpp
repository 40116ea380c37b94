#include "tools/hlx-panel/SimulatorLink.h"

#include <cstring>
#include <stdexcept>
#include <utility>

#include "cli/TimeStamp.h"
#include "dbus/VariantBuilder.h"

namespace {

constexpr char kName[] = "com.vorn.linux.simulator";
constexpr char kPath[] = "/com/vorn/linux/simulator";
constexpr char kInbox[] = "inbox.";

using Words = std::vector<std::string>;

GVariant* Strings(const Words& words) {
  VariantBuilder builder(G_VARIANT_TYPE("as"));
  for (const std::string& word : words) builder.Add("s", word.c_str());
  return builder.End();
}

GVariant* Boxed(Words::const_iterator first, Words::const_iterator last) {
  VariantBuilder builder(G_VARIANT_TYPE("av"));
  for (; first != last; ++first) builder.Add("v", g_variant_new_string(first->c_str()));
  return builder.End();
}

double Speed(const std::string& text) {
  char* end = nullptr;
  const double speed = g_ascii_strtod(text.c_str(), &end);
  if (text.empty() || *end != '\0' || !(speed >= 0)) throw std::invalid_argument("speed: '" + text + "' is no speed");
  return speed;
}

GVariant* OneWord(const Words& words) { return g_variant_new("(s)", words[0].c_str()); }
GVariant* Nothing(const Words& /*words*/) { return nullptr; }

struct Verb {
  const char* method;
  std::size_t words;  ///< at least so many
  GVariant* (*arguments)(const Words& words);
};
constexpr Verb kVerbs[] = {
    {"Set", 2,
     [](const Words& words) {
       return g_variant_new("(svb)", words[0].c_str(), g_variant_new_string(words[1].c_str()), FALSE);
     }},
    {"Emit", 1,
     [](const Words& words) {
       return g_variant_new("(s@av)", words[0].c_str(), Boxed(words.begin() + 1, words.end()));
     }},
    {"Play", 2, [](const Words& words) { return g_variant_new("(sdb)", words[0].c_str(), Speed(words[1]), FALSE); }},
    {"Stop", 0, Nothing},
    {"Fault", 1, [](const Words& words) { return g_variant_new("(@asu)", Strings(words), 0U); }},
    {"ClearFaults", 0, Nothing},
    {"Reboot", 1, OneWord},
    {"Stick", 1, OneWord},
};

}  // namespace

SimulatorLink::SimulatorLink(const Bus& bus, std::function<void()> changed) : bus_(bus), changed_(std::move(changed)) {
  subscription_ = g_dbus_connection_signal_subscribe(
      bus.Connection(), kName, kName, nullptr, kPath, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
      [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* signal, GVariant* arguments,
         gpointer self) { static_cast<SimulatorLink*>(self)->Hear(signal, arguments); },
      this, nullptr);
  watch_ = g_bus_watch_name_on_connection(
      bus.Connection(), kName, G_BUS_NAME_WATCHER_FLAGS_NONE,
      [](GDBusConnection*, const gchar*, const gchar*, gpointer self) {
        static_cast<SimulatorLink*>(self)->Appeared();
      },
      [](GDBusConnection*, const gchar*, gpointer self) { static_cast<SimulatorLink*>(self)->Vanished(); }, this,
      nullptr);
}

SimulatorLink::~SimulatorLink() {
  g_cancellable_cancel(cancel_.get());
  g_bus_unwatch_name(watch_);
  g_dbus_connection_signal_unsubscribe(bus_.Connection(), subscription_);
}

void SimulatorLink::Call(const char* method, GVariant* arguments,
                         std::function<void(GVariant* reply, const GError* problem)> done) {
  using Callback = decltype(done);
  const auto finish = [](GObject* connection, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Callback> callback(static_cast<Callback*>(data));
    GError* problem = nullptr;
    const GLibPtr<GVariant> reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, &problem));
    const GLibPtr<GError> owned(problem);
    if (!g_error_matches(problem, G_IO_ERROR, G_IO_ERROR_CANCELLED)) (*callback)(reply.get(), problem);
  };
  g_dbus_connection_call(bus_.Connection(), kName, kPath, kName, method, arguments, nullptr,
                         G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, cancel_.get(), finish, new Callback(std::move(done)));
}

void SimulatorLink::Appeared() {
  Call("List", g_variant_new("(s)", ""), [this](GVariant* reply, const GError* problem) {
    if (problem != nullptr) return;
    offers_ = Json::object();
    GVariantIter* entries = nullptr;
    g_variant_get(reply, "(a(sss))", &entries);
    const gchar* kind = nullptr;
    const gchar* name = nullptr;
    const gchar* help = nullptr;
    while (g_variant_iter_loop(entries, "(&s&s&s)", &kind, &name, &help) != FALSE) {
      if (std::strcmp(kind, "value") != 0 && std::strcmp(kind, "method") != 0) offers_[kind].push_back({name, help});
    }
    g_variant_iter_free(entries);
    Changed();
  });
  Call("Get", g_variant_new("(@as)", Strings({"inbox"})), [this](GVariant* reply, const GError* problem) {
    if (problem != nullptr) return;
    GVariantIter* values = nullptr;
    g_variant_get(reply, "(a(sv))", &values);
    const gchar* name = nullptr;
    GVariant* value = nullptr;
    while (g_variant_iter_loop(values, "(&sv)", &name, &value) != FALSE) inbox_[name] = JsonOf(value);
    g_variant_iter_free(values);
    Changed();
  });
  Call("Status", nullptr, [this](GVariant* reply, const GError* problem) {
    if (problem == nullptr) TakeStatus(reply);
  });
}

void SimulatorLink::Vanished() {
  offers_ = nullptr;
  inbox_ = Json::object();
  played_ = nullptr;
  Changed();
}

void SimulatorLink::Changed() {
  ++revision_;
  changed_();
}

void SimulatorLink::Hear(const char* signal, GVariant* arguments) {
  if (std::strcmp(signal, "Called") == 0 && g_variant_is_of_type(arguments, G_VARIANT_TYPE("(xssa{sv})")) != FALSE) {
    gint64 microseconds = 0;
    const gchar* sender = nullptr;
    const gchar* method = nullptr;
    GVariant* given = nullptr;
    g_variant_get(arguments, "(x&s&s@a{sv})", &microseconds, &sender, &method, &given);
    const GLibPtr<GVariant> owned(given);
    calls_.Add(Compact(
        {{"time", JsonTimeStamp(microseconds)}, {"sender", sender}, {"method", method}, {"arguments", JsonOf(given)}}));
    changed_();
  } else if (std::strcmp(signal, "Changed") == 0 && g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sv)")) != FALSE) {
    const gchar* name = nullptr;
    GVariant* value = nullptr;
    g_variant_get(arguments, "(&sv)", &name, &value);
    const GLibPtr<GVariant> owned(value);
    if (g_str_has_prefix(name, kInbox) != FALSE) inbox_[name] = JsonOf(value);
    Changed();
  } else if (std::strcmp(signal, "Played") == 0) {
    TakeStatus(arguments);
  }
}

void SimulatorLink::TakeStatus(GVariant* tuple) {
  if (g_variant_is_of_type(tuple, G_VARIANT_TYPE("(a{sv})")) == FALSE) return;
  played_ = JsonOf(GLibPtr<GVariant>(g_variant_get_child_value(tuple, 0)).get());
  Changed();
}

void SimulatorLink::Do(const std::string& verb, const Words& words, Done done) {
  for (const Verb& row : kVerbs) {
    if (verb != row.method) continue;
    if (words.size() < row.words) throw std::invalid_argument(verb + " needs " + std::to_string(row.words) + " words");
    for (const std::string& word : words) {
      if (g_utf8_validate(word.c_str(), -1, nullptr) == FALSE) throw std::invalid_argument(verb + ": not UTF-8");
    }
    return Call(row.method, row.arguments(words), [done = std::move(done)](GVariant*, const GError* problem) {
      if (problem == nullptr) return done("");
      const GLibPtr<GError> copy(g_error_copy(problem));
      g_dbus_error_strip_remote_error(copy.get());
      done(copy->message);
    });
  }
  throw std::invalid_argument("there is no verb '" + verb + "'");
}
