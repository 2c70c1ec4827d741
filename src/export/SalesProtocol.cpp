#include "export/SalesProtocol.h"

#include <charconv>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::string_view plainMarks = "-._~";
constexpr std::string_view hexDigits = "0123456789ABCDEF";

bool IsPlain(char character) {
  const bool isLetter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
  return isLetter || (character >= '0' && character <= '9') || plainMarks.find(character) != std::string_view::npos;
}

/// Whether two hexadecimal digits were there; only then `byte` is set.
bool ReadByte(std::string_view digits, unsigned char& byte) {
  if (digits.size() < 2) return false;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + 2, byte, 16);
  return error == std::errc() && end == digits.data() + 2;
}

/// Percent-encoding of bytes (RFC 3986): every byte that is no ASCII letter, digit, "-", ".", "_" or "~" becomes "%"
/// and two upper-case hexadecimal digits.
std::string PercentEncode(std::string_view text) {
  std::string encoded;
  encoded.reserve(text.size());
  for (const char character : text) {
    if (IsPlain(character)) {
      encoded += character;
      continue;
    }
    const auto byte = static_cast<unsigned char>(character);
    encoded += '%';
    encoded += hexDigits[byte >> 4U];
    encoded += hexDigits[byte & 0xFU];
  }
  return encoded;
}

/// The inverse, hexadecimal digits in either casing. A "%" that two such digits do not follow stays as it is, and so
/// does "+".
std::string PercentDecode(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t position = 0; position < text.size(); ++position) {
    unsigned char byte = 0;
    if (text[position] == '%' && ReadByte(text.substr(position + 1), byte)) {
      decoded += static_cast<char>(byte);
      position += 2;
    } else {
      decoded += text[position];
    }
  }
  return decoded;
}

/// Two fields for the kind of the request, the store, and a date in plain numbers.
std::vector<std::string> BeginFields(const char* first, std::string_view store, Date date) {
  return {first,
          "1",
          std::string(store),
          std::to_string(date.Day()),
          std::to_string(date.Month()),
          std::to_string(date.Year())};
}

}  // namespace

std::vector<std::string> PendingDaysFields(std::string_view store, Date reference) {
  return BeginFields("1", store, reference);
}

std::vector<std::string> DayFields(std::string_view store, Date day, const DaySalesTotals& totals,
                                   std::string_view separator) {
  std::vector<std::string> fields = BeginFields("0", store, day);
  fields.push_back(std::to_string(totals.operations));
  for (const Currency amount : {totals.subtotal, totals.discounts, totals.taxes, totals.total}) {
    fields.push_back(FormatAmount(amount, separator));
  }
  return fields;
}

std::string FormatAmount(Currency value, std::string_view separator) {
  return ReplaceAll(value.ToRoundedText(2), separator, "");
}

std::string EncodeFields(std::span<const std::string> fields) {
  std::string joined;
  for (const std::string& field : fields) joined += PercentEncode(field) + ' ';
  return PercentEncode(TrimBlanks(joined));
}

std::vector<std::string> DecodeAnswer(std::string_view answer) {
  std::vector<std::string> elements;
  if (answer.empty()) return elements;
  for (const std::string_view piece : Split(answer, ' ')) elements.push_back(PercentDecode(piece));
  return elements;
}

std::optional<Date> ParseListedDay(std::string_view element) {
  if (element.size() != 8 || element.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  const auto number = [element](std::size_t from, std::size_t length) {
    return ParseInteger(element.substr(from, length)).value_or(0);
  };
  return Date::FromExactParts(number(0, 4), number(4, 2), number(6, 2));
}

}  // namespace tolvan
