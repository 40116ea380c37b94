#include "simulator/cli/Verbs.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "cli/Printable.h"
#include "cli/TimeStamp.h"
#include "dbus/VariantBuilder.h"
#include "simulator/cli/ControlClient.h"
#include "simulator/control/Lists.h"
#include "simulator/control/Stick.h"
#include "simulator/model/ValueNames.h"
#include "simulator/model/Values.h"
#include "simulator/play/CaptureWriter.h"
#include "simulator/play/Script.h"

namespace {

/// What goes over the bus is UTF-8, and GVariant insists on it.
const std::string& Checked(const std::string& word) {
  if (g_utf8_validate(word.c_str(), static_cast<gssize>(word.size()), nullptr) == FALSE) {
    const GLibPtr<gchar> valid(g_utf8_make_valid(word.c_str(), static_cast<gssize>(word.size())));
    throw VerbError(kExitBadArgument, std::string("'") + valid.get() + "' is no UTF-8 text");
  }
  return word;
}

struct Told {
  std::string name;
  catalog::Scalar scalar;
};

/// "as", floating.
GVariant* TextArray(const Words& words) {
  VariantBuilder builder(G_VARIANT_TYPE("as"));
  for (const std::string& word : words) builder.Add("s", Checked(word).c_str());
  return builder.End();
}

std::vector<Told> Ask(const Words& names) {
  const auto answer = ControlClient().Call("Get", g_variant_new("(@as)", TextArray(names)), "(a(sv))");
  const GLibPtr<GVariant> array(g_variant_get_child_value(answer.get(), 0));
  std::vector<Told> values;
  for (gsize i = 0; i < g_variant_n_children(array.get()); ++i) {
    const GLibPtr<GVariant> entry(g_variant_get_child_value(array.get(), i));
    const gchar* name = nullptr;
    GVariant* boxed = nullptr;
    g_variant_get(entry.get(), "(&sv)", &name, &boxed);
    values.push_back({name, ScalarOf(GLibPtr<GVariant>(boxed).get())});
  }
  return values;
}

void PrintCall(GVariant* variant, bool json) {
  gint64 time = 0;
  const gchar* sender = nullptr;
  const gchar* method = nullptr;
  GVariant* arguments = nullptr;
  g_variant_get(variant, "(x&s&s@a{sv})", &time, &sender, &method, &arguments);
  const Call call = {time, sender, method, GLibPtr<GVariant>(arguments)};
  if (json) {
    std::puts(Compact(JsonOf(call)).c_str());
    return;
  }
  std::string text;
  const Json by_name = JsonOf(arguments);
  for (const auto& [name, value] : by_name.items()) text += (text.empty() ? "" : ", ") + name + "=" + value.dump();
  std::printf("%s  %s(%s)  from %s\n", JsonTimeStamp(time).substr(11, 12).c_str(), method, text.c_str(), sender);
}

}  // namespace

void SetVerb(const Words& words, bool silent) {
  Words given;
  for (const std::string& word : words) {
    if (word == "--silent") {
      silent = true;
    } else if (word != "--") {
      given.push_back(Checked(word));
    }
  }
  if (given.size() != 2) throw VerbError(kExitBadArgument, "set takes NAME VALUE; see hlx-simulator list values");
  ControlClient().Call(
      "Set", g_variant_new("(svb)", given[0].c_str(), g_variant_new_string(given[1].c_str()), silent ? TRUE : FALSE));
}

void GetVerb(const Words& words, const GetOptions& options) {
  const std::vector<Told> values = Ask(words);
  Json json = Json::object();
  bool areas = words.empty();
  for (const std::string& word : words) areas = areas || word.find('.') == std::string::npos;
  for (const Told& value : values) {
    const NamedValue named = ValueNamed(value.name);
    const catalog::Reading& reading = named.reading();
    const catalog::Reading plain = catalog::Decimal("", reading.decimals);
    const bool bare = options.raw && !std::holds_alternative<std::string>(value.scalar);
    const std::string text = bare ? catalog::InWords(plain, value.scalar) : InWords(named, value.scalar);
    if (options.json) {
      json[value.name] = options.raw || std::holds_alternative<double>(value.scalar) ||
                                 reading.kind == catalog::Reading::Kind::kCount ||
                                 reading.kind == catalog::Reading::Kind::kNumber
                             ? JsonOf(value.scalar)
                             : JsonOf(text);
    } else if (areas) {
      std::printf("%-32s %s\n", value.name.c_str(), Printable(text).c_str());
    } else {
      std::puts(Printable(text).c_str());
    }
  }
  if (options.json) std::puts(json.dump(2).c_str());
}

void EmitVerb(Words words) {
  words.erase(std::remove(words.begin(), words.end(), "--"), words.end());
  if (words.empty())
    throw VerbError(kExitBadArgument, "emit takes SIGNAL [ARGUMENT...]; see hlx-simulator list signals");
  VariantBuilder arguments(G_VARIANT_TYPE("av"));
  for (const std::string& word : words) Checked(word);
  for (std::size_t i = 1; i < words.size(); ++i) {
    arguments.Add("v", g_variant_new_string(words[i].c_str()));
  }
  ControlClient().Call("Emit", g_variant_new("(s@av)", words[0].c_str(), arguments.End()));
}

void ListVerb(const std::string& kind, bool markdown) {
  if (markdown) {
    std::fputs(MarkdownTable(kind).c_str(), stdout);
    return;
  }
  const bool plural = !kind.empty() && kind.back() == 's';
  const std::vector<ListEntry> entries = ListOf(plural ? kind.substr(0, kind.size() - 1) : kind);
  std::string heading;
  for (const ListEntry& entry : entries) {
    if (kind.empty() && entry.kind != heading) std::printf("%s%ss\n", heading.empty() ? "" : "\n", entry.kind.c_str());
    heading = entry.kind;
    std::printf("%s%-40s %s\n", kind.empty() ? "  " : "", entry.name.c_str(), entry.takes.c_str());
  }
}

void CallsVerb(const CallsOptions& options) {
  const ControlClient client;
  const char* const method = Checked(options.method).c_str();
  if (options.wait) {
    const auto answer = client.Call("WaitCall", g_variant_new("(sd)", method, options.seconds), "((xssa{sv}))");
    PrintCall(GLibPtr<GVariant>(g_variant_get_child_value(answer.get(), 0)).get(), options.json);
  } else if (!options.clear) {
    const auto answer = client.Call("Calls", g_variant_new("(s)", method), "(a(xssa{sv}))");
    const GLibPtr<GVariant> calls(g_variant_get_child_value(answer.get(), 0));
    for (gsize i = 0; i < g_variant_n_children(calls.get()); ++i) {
      PrintCall(GLibPtr<GVariant>(g_variant_get_child_value(calls.get(), i)).get(), options.json);
    }
  }
  if (options.clear) client.Call("ClearCalls", nullptr);
}

void FaultVerb(const Words& words, unsigned int times) {
  const ControlClient client;
  if (words == Words{"clear"}) {
    client.Call("ClearFaults", nullptr);
  } else if (words == Words{"list"}) {
    const auto answer = client.Call("Faults", nullptr, "(a(su))");
    const GLibPtr<GVariant> faults(g_variant_get_child_value(answer.get(), 0));
    for (gsize i = 0; i < g_variant_n_children(faults.get()); ++i) {
      const gchar* text = nullptr;
      guint left = 0;
      g_variant_get_child(faults.get(), i, "(&su)", &text, &left);
      const std::string end = left == 0 ? "" : " --times " + std::to_string(left);
      std::printf("%s%s\n", text, end.c_str());
    }
  } else {
    client.Call("Fault", g_variant_new("(@asu)", TextArray(words), times));
  }
}

namespace {

Json AskStatus(const ControlClient& client) {
  const auto answer = client.Call("Status", nullptr, "(a{sv})");
  return JsonOf(GLibPtr<GVariant>(g_variant_get_child_value(answer.get(), 0)).get());
}

}  // namespace

void PlayVerb(const PlayOptions& options) {
  const ControlClient client;
  const std::string file = ScriptNamed(Checked(options.file));
  client.Call("Play", g_variant_new("(sdb)", file.c_str(), options.speed, options.loop ? TRUE : FALSE));
  Json status = AskStatus(client);
  const std::string warning = status["warning"].get<std::string>();
  if (!warning.empty()) std::fprintf(stderr, "hlx-simulator: warning: %s\n", warning.c_str());
  if (!options.wait) return;
  while (status["state"] == "playing") {
    g_usleep(20000);
    status = AskStatus(client);
  }
  if (status["state"] == "done") return;
  throw VerbError(kExitFailed, status["state"] == "failed" ? status["error"].get<std::string>() : "it was stopped");
}

void StopVerb() { ControlClient().Call("Stop", nullptr); }

void StatusVerb(bool json) {
  const Json status = AskStatus(ControlClient());
  if (json) {
    std::puts(Compact(status).c_str());
    return;
  }
  for (const char* const text : {"state", "file", "label", "warning", "error"}) {
    const std::string said = status[text].get<std::string>();
    if (!said.empty()) std::printf("%-10s %s\n", text, Printable(said).c_str());
  }
  std::printf("%-10s %.1f of %.1f s\n", "position", status["position"].get<double>(), status["length"].get<double>());
  std::printf("%-10s %s\n", "events", status["events"].dump().c_str());
}

void RebootVerb(const std::string& how) { ControlClient().Call("Reboot", g_variant_new("(s)", how.c_str())); }

void StickVerb(const Words& words) {
  const bool insert = words.size() == 2 && words[0] == "insert" && words[1] != kRemoveStick;
  if (!insert && words != Words{kRemoveStick}) {
    throw VerbError(kExitBadArgument, "stick takes insert DIRECTORY | KIND, or remove; see hlx-simulator list sticks");
  }
  std::string what = Checked(words.back());
  // The unit has a working directory of its own.
  if (insert && what.find('/') != std::string::npos)
    what = GLibPtr<gchar>(g_canonicalize_filename(what.c_str(), nullptr)).get();
  ControlClient().Call("Stick", g_variant_new("(s)", what.c_str()));
}
