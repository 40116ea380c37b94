/// Values as the tool shows and takes them. One description serves text and JSON, showing and setting.
#pragma once

#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

struct Word {
  int64_t value;
  const char* word;
};

/// A view of a table of named values; the table outlives it.
class Words {
 public:
  template <std::size_t N>
  constexpr Words(const Word (&table)[N]) : begin_(table), end_(table + N) {}  // NOLINT: meant to convert
  constexpr const Word* begin() const { return begin_; }
  constexpr const Word* end() const { return end_; }

 private:
  const Word* begin_;
  const Word* end_;
};

/// The word for `value`; "unnamed (7)" for a value without one.
std::string InWords(Words words, int64_t value);

/// "day, night": what there is to choose from.
std::string List(Words words);

using Json = nlohmann::ordered_json;

struct Value {
  Json value;        ///< as the library gave it; null when the unit does not provide it
  std::string text;  ///< the same for people
  std::string unit;  ///< empty: none

  Json ToJson() const;
  std::string ToText() const;
};

// How a getter's result or an event's argument becomes a Value. All are callable with any integer or enumeration.

struct Number {
  const char* unit = "";
  template <class T>
  Value operator()(T number) const {
    return Make(static_cast<int64_t>(number));
  }

 private:
  Value Make(int64_t number) const;
};

/// As Number; 0 says that the unit does not provide it.
struct Measure {
  const char* unit = "";
  Value operator()(double number) const;
};

struct Decimal {
  const char* unit = "";
  int digits = 1;
  Value operator()(double number) const;
};

struct Named {
  Words words;
  template <class T>
  Value operator()(T value) const {
    return {static_cast<int64_t>(value), InWords(words, static_cast<int64_t>(value)), ""};
  }
};

/// Non-zero is `yes`.
struct Flag {
  const char* yes = "on";
  const char* no = "off";
  Value operator()(int64_t value) const { return {value, value != 0 ? yes : no, ""}; }
};

/// An empty text is one that the unit does not provide.
struct Text {
  Value operator()(const std::string& text) const;
};

constexpr Flag kOnOff;
constexpr Flag kYesNo{"yes", "no"};
