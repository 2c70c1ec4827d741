#include "export/SalesProtocol.h"

#include "base/PercentEncoding.h"
#include "base/Text.h"

namespace tolvan {
namespace {

/// Two fields that tell the kind of the request, the store, and a date in plain numbers.
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
  return ReplaceAll(value.ToTextWithCents(), separator, "");
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
