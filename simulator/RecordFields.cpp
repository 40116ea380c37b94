#include "simulator/RecordFields.h"

namespace {

template <class T>
void StoreAs(void* field, int64_t value) {
  HLXSystemData::Store(*static_cast<T*>(field), static_cast<T>(value));
}

}  // namespace

void RecordField::StoreNumber(Records& records, int64_t value) const {
  switch (kind) {
    case Kind::kDouble:
      return StoreDouble(records, static_cast<double>(value));
    case Kind::kText:
      return StoreText(records, std::to_string(value));
    default:
      return size == 1 ? StoreAs<uint8_t>(address(records), value) : StoreAs<uint32_t>(address(records), value);
  }
}

void RecordField::StoreDouble(Records& records, double value) const {
  HLXSystemData::Store(*static_cast<double*>(address(records)), value);
}

void RecordField::StoreText(Records& records, const std::string& text) const {
  const std::string what(name);
  if (kind == Kind::kDouble) return StoreDouble(records, ParseDouble(text, what));
  if (kind == Kind::kText) {
    if (text.size() >= size) {
      throw BadArgument(what + ": a text of " + std::to_string(text.size()) + " bytes does not fit, at most " +
                        std::to_string(size - 1));
    }
    // From the end, so that a reader meets a terminator at any moment.
    auto* const bytes = static_cast<char*>(address(records));
    for (std::size_t i = size; i-- > 0;) HLXSystemData::Store(bytes[i], i < text.size() ? text[i] : '\0');
    return;
  }
  const int bits = static_cast<int>(size) * 8 - (kind == Kind::kSigned ? 1 : 0);
  const int64_t highest = (int64_t{1} << bits) - 1;
  StoreNumber(records, ParseInteger(text, kind == Kind::kSigned ? -highest - 1 : 0, highest, what));
}
