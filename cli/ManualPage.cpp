#include "cli/ManualPage.h"

#include <glib.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <sstream>
#include <utility>

namespace cli {

namespace {

/// Characters that roff would take for its own, or show as others that look better and cannot be copied into a shell;
/// what is not ASCII by its number.
std::string Escaped(const std::string& text) {
  constexpr std::pair<char, const char*> kSpecial[] = {{'\\', "\\e"},  {'-', "\\-"},   {'\'', "\\(aq"},
                                                       {'`', "\\(ga"}, {'^', "\\(ha"}, {'~', "\\(ti"}};
  std::string escaped;
  const char* const start = text.c_str();
  for (const char* at = start; *at != '\0'; at = g_utf8_find_next_char(at, nullptr)) {
    const gunichar character = g_utf8_get_char(at);
    const auto* const special = std::find_if(std::begin(kSpecial), std::end(kSpecial),
                                             [at](const auto& candidate) { return candidate.first == *at; });
    if (special != std::end(kSpecial)) {
      escaped += special->second;
    } else if (character == '.' && (at == start || at[-1] == '\n')) {
      escaped += "\\&.";
    } else if (character < 0x80) {
      escaped += *at;
    } else {
      char number[16];
      std::snprintf(number, sizeof number, "\\[u%04X]", character);
      escaped += number;
    }
  }
  return escaped;
}

std::string Bold(const std::string& text) { return "\\fB" + Escaped(text) + "\\fR"; }
std::string Italic(const std::string& text) { return "\\fI" + Escaped(text) + "\\fR"; }

std::string Sentence(const std::string& text) {
  return Escaped(text) + (!text.empty() && text.back() == '.' ? "\n" : ".\n");
}

std::string Upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::toupper(c); });
  return text;
}

/// Paragraphs; lines that begin with blanks as they are.
std::string Body(const std::string& text) {
  std::istringstream lines(text);
  std::string body;
  bool literal = false;
  for (std::string line; std::getline(lines, line);) {
    const bool now = !line.empty() && line[0] == ' ';
    if (now != literal) body += now ? ".PP\n.nf\n" : ".fi\n.PP\n";
    literal = now;
    body += line.empty() ? ".PP\n" : Escaped(line) + "\n";
  }
  return literal ? body + ".fi\n" : body;
}

bool IsShown(const CLI::App* app) { return !app->get_group().empty(); }

std::string Synopsis(const CLI::App& app, const std::string& path) {
  std::string text = Bold(path);
  for (const CLI::Option* const option : app.get_options([](const CLI::Option* o) { return o->get_positional(); })) {
    std::string name = Italic(option->get_name(true));
    if (option->get_expected_max() > 1) name += "...";
    text += " " + (option->get_required() ? name : "[" + name + "]");
  }
  return text;
}

std::string Options(const CLI::App& app) {
  std::string text;
  for (const CLI::Option* const option : app.get_options()) {
    if (option == app.get_help_ptr() || option->get_group().empty()) continue;
    const bool positional = option->get_positional();
    text += ".TP\n" + (positional ? Italic(option->get_name(true)) : Bold(option->get_name(false, true)));
    if (!positional && !option->get_type_name().empty() && option->get_expected_max() > 0) {
      text += " " + Italic(option->get_type_name());
    }
    text += "\n" + Sentence(option->get_description());
  }
  return text;
}

struct Footers {
  std::string examples;
  std::string exit_codes;
};

/// Puts the lines of the footer where they belong; what stays is returned.
std::string Sort(const std::string& footer, Footers& footers) {
  std::string rest;
  std::string* part = &rest;
  std::istringstream lines(footer);
  for (std::string line; std::getline(lines, line);) {
    if (line == "Examples:") {
      part = &footers.examples;
    } else if (line == "Exit codes:") {
      part = &footers.exit_codes;
    } else {
      part->append(line) += "\n";
    }
  }
  return Escaped(rest);
}

void Describe(const CLI::App& app, const std::string& path, Footers& footers, std::string& page) {
  for (const CLI::App* const sub : app.get_subcommands(IsShown)) {
    const std::string name = path + " " + sub->get_name();
    page += ".SS " + Synopsis(*sub, name) + "\n" + Sentence(sub->get_description());
    if (sub->get_footer() != app.get_footer()) page += Sort(sub->get_footer(), footers);  // else it is inherited
    page += Options(*sub);
    Describe(*sub, name, footers, page);
  }
}

}  // namespace

std::string ManualPage(const CLI::App& app, const ManualExtras& extras) {
  const std::string& name = app.get_name();
  std::string page = ".TH " + Upper(name) + " 1 \"\" \"" + extras.version + "\" \"User Commands\"\n.SH NAME\n" +
                     Escaped(name) + " \\- " + Escaped(extras.name_line) + "\n.SH SYNOPSIS\n.B " + Escaped(name) +
                     "\n[\\fIOPTION\\fR]... [\\fIVERB\\fR [\\fIARGUMENT\\fR]...]\n";
  for (const auto& [heading, text] : extras.before) page += ".SH " + Escaped(Upper(heading)) + "\n" + Body(text);
  Footers footers;
  std::string verbs;
  Describe(app, name, footers, verbs);
  const std::string rest = Sort(app.get_footer(), footers);
  page += ".SH OPTIONS\n" + Options(app) + (rest.empty() ? "" : ".PP\n" + rest) + ".SH VERBS\n" + verbs;
  if (!footers.examples.empty()) page += ".SH EXAMPLES\n" + Body(footers.examples);
  if (!footers.exit_codes.empty()) page += ".SH EXIT STATUS\n" + Body(footers.exit_codes);
  for (const auto& [heading, text] : extras.after) page += ".SH " + Escaped(Upper(heading)) + "\n" + Body(text);
  return page;
}

}  // namespace cli
