/// What a value is at run time, how it reads for people, and how it is read from what people type.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <variant>

namespace catalog {

/// A view of rows that live as long as the program.
template <class T>
class View {
 public:
  constexpr View() = default;
  template <std::size_t N>
  constexpr View(const T (&rows)[N]) : begin_(rows), end_(rows + N) {}  // NOLINT: meant to convert
  constexpr View(const T* begin, const T* end) : begin_(begin), end_(end) {}
  constexpr const T* begin() const { return begin_; }
  constexpr const T* end() const { return end_; }
  constexpr std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
  constexpr bool empty() const { return begin_ == end_; }
  constexpr const T& operator[](std::size_t index) const { return begin_[index]; }

 private:
  const T* begin_ = nullptr;
  const T* end_ = nullptr;
};

/// The name of one number, in kebab-case.
struct Word {
  int64_t value;
  const char* word;
};
using Words = View<Word>;

/// A value at run time. Nothing: the unit does not provide it. Numbers, flags and enumerations are int64_t; dates,
/// times of day and moments are text: "2024-02-29", "23:59:30", "2024-02-29T23:59:30".
using Scalar = std::variant<std::monostate, int64_t, double, std::string>;

/// Text or a number that a value or an argument does not take; the text says what is allowed.
class BadValue : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

struct Arity {
  std::size_t least;
  std::size_t most;
};

/// @param form added to the text: what the arguments are. @throws BadValue "SetLogo takes 1 argument, not 2"
void RequireArity(const std::string& name, Arity takes, std::size_t given, const std::string& form = "");

/// @throws BadValue where it holds no number
double NumberIn(const Scalar& scalar);

/// How a value reads. Made by the functions below; `In()` narrows what it may be set to.
struct Reading {
  enum class Kind {
    kCount,    ///< a whole number without unit: a step, a number of things, or as the CAN box counts it
    kNumber,   ///< a whole number with a unit
    kDecimal,  ///< a number with decimals
    kFlag,     ///< 0 or 1; any other number reads as 1
    kNamed,    ///< an enumeration; numbers without a word may occur
    kBits,     ///< a byte of flags, in hexadecimal; each flag has a value of its own
    kCode,     ///< a byte in hexadecimal
    kZone,     ///< a SystemTime::TimeZone; the record and data/ know the names
    kText,     ///< UTF-8, as far as the unit keeps to it
    kDate,
    kClock,  ///< a time of day
    kMoment,
  };

  Kind kind = Kind::kCount;
  Words words = {};       ///< of kFlag and kNamed; of other numbers, words for the special ones
  const char* unit = "";  ///< "s", "°"; empty: none
  int decimals = 0;       ///< of kDecimal: digits that are shown
  int scale = 1;          ///< the record holds so many times the value
  int64_t least = std::numeric_limits<int64_t>::min();
  int64_t most = std::numeric_limits<int64_t>::max();

  /// The same, for values from `low` to `high`: what people may set, sliders offer and plausible values stay in.
  constexpr Reading In(int64_t low, int64_t high) const {
    Reading reading = *this;
    reading.least = low;
    reading.most = high;
    return reading;
  }
  constexpr bool HasRange() const {
    return least != std::numeric_limits<int64_t>::min() || most != std::numeric_limits<int64_t>::max();
  }
  constexpr bool IsNumeric() const { return kind < Kind::kText; }
};

constexpr Reading Plain(Reading::Kind kind) { return {kind}; }
constexpr Reading Count(Words special = {}) { return {Reading::Kind::kCount, special}; }
constexpr Reading Number(const char* unit) { return {Reading::Kind::kNumber, {}, unit}; }
constexpr Reading Decimal(const char* unit, int decimals, int scale = 1) {
  return {Reading::Kind::kDecimal, {}, unit, decimals, scale};
}
/// `words`: of 1 and of 0, and of -1 where that may occur.
constexpr Reading Flag(Words words) { return Reading{Reading::Kind::kFlag, words}.In(0, 1); }
constexpr Reading Named(Words words) { return Reading{Reading::Kind::kNamed, words}.In(0, 255); }

/// "on", "40", "21.5", "unnamed (7)"; empty for nothing. Text is as the unit gives it, with control characters and all.
std::string InWords(const Reading& reading, const Scalar& value);

/// As InWords(), with the unit: "20 s".
std::string WithUnit(const Reading& reading, const Scalar& value);

/// "on or off", "day, night, or 0 to 255", "a day that exists, as YYYY-MM-DD": for help and errors.
std::string Allowed(const Reading& reading);

/// What `text` says, within what `reading` allows: a word (on, true and yes for 1, off, false and no for 0 of a flag,
/// in any case), a whole number, also in hexadecimal ("0x1f"), a number with decimals where the reading has them, a
/// date, a time of day ("23:59" too), a moment, or UTF-8 text. @throws BadValue
Scalar Parse(const Reading& reading, const std::string& text);

/// The whole of `text` as a whole number, decimal or "0x...". @throws BadValue when it is none from `least` to `most`
int64_t ParseWhole(const std::string& text, int64_t least, int64_t most);

}  // namespace catalog
