#include "simulator/play/Located.h"

namespace {

/// Counts the lines that the parser has read.
struct Position {
  int line = 1;
  bool at_line_start = false;  ///< the last character ended a line
  /// Of the last token. To end a number the parser reads one character more.
  int LineOf(bool number) const { return number && at_line_start ? line - 1 : line; }
};

class Counting {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  Counting(const char* at, Position* position) : at_(at), position_(position) {}
  reference operator*() const { return *at_; }
  Counting& operator++() {
    position_->at_line_start = *at_ == '\n';
    if (*at_++ == '\n') ++position_->line;
    return *this;
  }
  bool operator==(const Counting& other) const { return at_ == other.at_; }
  bool operator!=(const Counting& other) const { return at_ != other.at_; }

 private:
  const char* at_;
  Position* position_;
};

/// What nlohmann's parser tells becomes a tree.
class Builder : public nlohmann::json_sax<Json> {
 public:
  Builder(std::string file, Position* position) : file_(std::move(file)), position_(position) {}

  bool null() override { return Add(Json()); }
  bool boolean(bool value) override { return Add(value); }
  bool number_integer(number_integer_t value) override { return Add(value, true); }
  bool number_unsigned(number_unsigned_t value) override { return Add(value, true); }
  bool number_float(number_float_t value, const string_t& /*text*/) override { return Add(value, true); }
  bool string(string_t& value) override { return Add(value); }
  bool binary(binary_t& /*value*/) override { return false; }
  bool start_object(std::size_t /*size*/) override { return Open(Located::Kind::kObject); }
  bool start_array(std::size_t /*size*/) override { return Open(Located::Kind::kArray); }
  bool end_object() override { return Close(); }
  bool end_array() override { return Close(); }
  bool key(string_t& key) override {
    if (open_.back()->Find(key) != nullptr) Throw("the key \"" + key + "\" is there twice");
    key_ = key;
    return true;
  }
  bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                   const nlohmann::detail::exception& problem) override {
    const std::string text = problem.what();
    const std::size_t at = text.rfind("; last read");
    const std::size_t begin = text.find(": ", text.find("column"));
    Throw("no JSON: " + (begin == std::string::npos ? text : text.substr(begin + 2, at - begin - 2)));
  }

  Located root;

 private:
  [[noreturn]] void Throw(const std::string& what) const { throw BadFile(file_, position_->line, what); }

  Located& Place() {
    if (++parts_ > kMostParts) Throw("more than " + std::to_string(kMostParts) + " parts");
    if (open_.empty()) return root;
    Located& parent = *open_.back();
    if (parent.kind == Located::Kind::kArray) return parent.items.emplace_back();
    if (parent.members.size() == kMostMembers)
      Throw("more than " + std::to_string(kMostMembers) + " keys in an object");
    return parent.members.emplace_back(std::move(key_), Located()).second;
  }
  bool Add(Json value, bool number = false) {
    Located& place = Place();
    place.line = position_->LineOf(number);
    place.scalar = std::move(value);
    return true;
  }
  bool Open(Located::Kind kind) {
    if (open_.size() == kMostLevels) Throw("nested more than " + std::to_string(kMostLevels) + " levels deep");
    Located& place = Place();
    place.kind = kind;
    place.line = position_->line;
    open_.push_back(&place);
    return true;
  }
  bool Close() {
    open_.pop_back();
    return true;
  }

  const std::string file_;
  Position* position_;
  std::vector<Located*> open_;  ///< only the last child of each grows: the others stay where they are
  std::string key_;
  std::size_t parts_ = 0;
};

}  // namespace

const Located* Located::Find(const std::string& key) const {
  for (const auto& [name, member] : members) {
    if (name == key) return &member;
  }
  return nullptr;
}

std::string Located::Text() const {
  if (kind != Kind::kScalar) return kind == Kind::kArray ? "[...]" : "{...}";
  return scalar.is_string() ? scalar.get<std::string>() : scalar.dump();
}

Located ParseLocated(const std::string& file, const std::string& text, int line) {
  Position position{line};
  Builder builder(file, &position);
  const char* const begin = text.data();
  Json::sax_parse(Counting(begin, &position), Counting(begin + text.size(), &position), &builder);
  return std::move(builder.root);
}
