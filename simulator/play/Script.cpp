#include "simulator/play/Script.h"

#include <glib.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "catalog/Catalog.h"
#include "dbus/GLibPtr.h"
#include "simulator/Installed.h"
#include "simulator/model/Names.h"
#include "simulator/model/SignalTable.h"
#include "simulator/play/Located.h"

using catalog::BadValue;
namespace fs = std::filesystem;

namespace {

constexpr char kSuffix[] = ".json";

std::vector<std::string> InstalledNames() {
  std::vector<std::string> names;
  std::error_code none;  // nothing was installed: there are no names
  for (const auto& entry : fs::directory_iterator(InstalledFile("scenarios"), none)) {
    if (entry.path().extension() == kSuffix) names.push_back(entry.path().stem());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string FileOf(const std::string& name) {
  if (name.find('/') != std::string::npos) return name;
  std::string file = InstalledFile("scenarios/" + name + kSuffix);
  if (!file.empty()) return file;
  throw Unknown("file and no scenario", name, catalog::Nearest(name, InstalledNames()));
}

std::string Contents(const std::string& file) {
  struct stat status {};
  std::ifstream stream;
  if (stat(file.c_str(), &status) == 0 && S_ISREG(status.st_mode)) stream.open(file, std::ios::binary);
  if (status.st_mode != 0 && !S_ISREG(status.st_mode)) throw BadValue(file + ": not a regular file");
  if (!stream.is_open()) throw BadValue(file + ": " + std::strerror(errno));
  const auto size = static_cast<std::size_t>(status.st_size);
  if (size > kMostBytes) {
    throw BadValue(file + ": " + std::to_string(size) + " bytes; at most " + std::to_string(kMostBytes) + " are read");
  }
  std::string text(size, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(size));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  const gchar* wrong = nullptr;
  if (g_utf8_validate(text.data(), static_cast<gssize>(text.size()), &wrong) == FALSE) {
    throw BadFile(file, 1 + static_cast<int>(std::count(text.c_str(), wrong, '\n')), "no UTF-8 text");
  }
  return text;
}

}  // namespace

std::vector<catalog::Scalar> ArgumentsOf(const catalog::Signal& signal, const Located* array) {
  if (array != nullptr && array->kind != Located::Kind::kArray) throw BadValue("args: an array is needed");
  static const std::vector<Located> none;
  const std::vector<Located>& arguments = array == nullptr ? none : array->items;
  std::vector<GLibPtr<GVariant>> texts;
  texts.reserve(arguments.size());
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const Located& argument = arguments[i];
    // A number with an exponent is no text that people write.
    const bool is_fraction =
        argument.scalar.is_number_float() && signal.arguments[std::min(i, std::strlen(signal.arguments))] == 'd';
    texts.emplace_back(g_variant_ref_sink(g_variant_new_string(is_fraction ? "0" : argument.Text().c_str())));
  }
  std::vector<catalog::Scalar> scalars = ScalarsOf(signal, texts);
  for (std::size_t i = 0; i < scalars.size(); ++i) {
    if (signal.arguments[i] == 'd' && arguments[i].IsNumber()) scalars[i] = arguments[i].scalar.get<double>();
  }
  return scalars;
}

std::string ScriptNamed(const std::string& word) {
  const bool is_file = word.find('/') != std::string::npos || g_file_test(word.c_str(), G_FILE_TEST_EXISTS) != FALSE;
  return is_file ? GLibPtr<gchar>(g_canonicalize_filename(word.c_str(), nullptr)).get() : word;
}

Script ReadScript(const std::string& name) {
  Script script;
  script.file = FileOf(name);
  const std::string text = Contents(script.file);
  // A capture is a line for each event, and each is a document of its own.
  script.is_capture = text.substr(0, text.find('\n')).find("\"hlx-capture\"") != std::string::npos;
  script.is_capture ? ReadCapture(text, script) : ReadScenario(text, script);
  std::stable_sort(script.steps.begin(), script.steps.end(),
                   [](const Step& one, const Step& other) { return one.time < other.time; });
  if (!script.steps.empty()) script.length = std::max(script.length, script.steps.back().time);
  return script;
}

std::vector<std::pair<std::string, std::string>> InstalledScenarios() {
  std::vector<std::pair<std::string, std::string>> scenarios;
  for (const std::string& name : InstalledNames()) scenarios.emplace_back(name, ReadScript(name).title);
  return scenarios;
}
