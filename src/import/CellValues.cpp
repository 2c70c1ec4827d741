#include "import/CellValues.h"

#include <utility>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::int64_t sixteenDigits = 1'000'000'000'000'000;  // the first count with more than fifteen digits

template <char... dropped>
std::string Without(std::string text) {
  std::erase_if(text, [](char c) { return ((c == dropped) || ...); });
  return text;
}

}  // namespace

std::string CleanCode(std::string_view text, std::size_t length) {
  return ToUpper(FirstCharacters(Without<' ', '\r', '\n'>(std::string(text)), length));
}

std::string CodeOrDefault(std::string_view code) {
  return std::string(code.empty() ? std::string_view(defaultCode) : code);
}

std::string CleanDescription(std::string_view text, std::size_t length) {
  std::string single = ReplaceAll(TrimBlanks(text), "  ", " ");
  return ToUpper(FirstCharacters(Without<'-', '/', '.', '\r', '\n'>(std::move(single)), length));
}

std::string CleanModelCode(std::string_view text) {
  return ToUpper(FirstCharacters(Without<' ', '-', '/', '.'>(std::string(text)), shortCodeLength));
}

bool HoldsNothing(const SheetCell& cell) {
  return cell.kind == CellKind::Empty || (cell.kind == CellKind::Text && cell.text.empty());
}

std::string NotANumber(const SheetCell& cell, std::string_view name) {
  return std::string(name) + " no es un número (" + cell.AsText() + ") y no se toma en cuenta";
}

void RefuseError(const SheetCell& cell, std::string_view name, std::string& reason) {
  if (cell.kind != CellKind::Error) return;
  AppendSentence(reason, std::string(name) + " es un error de la hoja (" + std::string(cell.text) + ")");
}

GivenAmount ReadAmount(const SheetCell& cell, std::string_view name, Remarks& remarks, std::string& reason) {
  if (HoldsNothing(cell)) return {};
  if (cell.kind != CellKind::Number) {
    remarks.push_back(NotANumber(cell, name));
    return {.unusable = true};
  }
  const std::optional<Currency> amount = Currency::FromDouble(cell.number);
  if (!amount) {
    AppendSentence(reason, std::string(name) + " es demasiado grande para un importe");
    return {};
  }
  if (*amount < Currency()) {
    AppendSentence(reason, std::string(name) + " es negativo (" + amount->ToShortestText() + ")");
    return {};
  }
  return {.value = amount};
}

Currency AmountInCell(Currency amount) {
  const std::int64_t count = amount.TenThousandths();
  std::int64_t step = 1;
  while (count / step >= sixteenDigits || count / step <= -sixteenDigits) step *= 10;
  if (step == 1) return amount;
  std::int64_t steps = count / step;
  const std::int64_t rest = count % step;
  if (rest >= step / 2) ++steps;
  if (-rest >= step / 2) --steps;
  // At the very end of the range the rounded amount may not fit any more; there the digits are cut off.
  if (__builtin_mul_overflow(steps, step, &steps)) return Currency::FromTenThousandths(count - rest);
  return Currency::FromTenThousandths(steps);
}

}  // namespace tolvan
