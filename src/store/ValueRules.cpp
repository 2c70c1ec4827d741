#include "store/ValueRules.h"

#include "base/Addresses.h"
#include "base/Text.h"

namespace tolvan {
namespace {

Complaint TakeIf(bool usable, std::string_view value, std::string& target, std::string_view complaint) {
  if (!usable) return std::string(complaint);
  target = value;
  return std::nullopt;
}

}  // namespace

Complaint TakeNumber(std::string_view value, std::int32_t least, std::int32_t most, std::int32_t& target) {
  const std::optional<std::int32_t> number = ParseInteger(value);
  if (!number || *number < least || *number > most) {
    return "debe ser un número entero de " + std::to_string(least) + " a " + std::to_string(most);
  }
  target = *number;
  return std::nullopt;
}

Complaint TakeFlag(std::string_view value, bool& target) {
  if (value != "0" && value != "1") return "debe ser 0 o 1";
  target = value == "1";
  return std::nullopt;
}

Complaint TakeFilledText(std::string_view value, std::string& target) {
  return TakeIf(!value.empty(), value, target, "no puede quedar vacío");
}

Complaint TakeMoneyFormat(std::string_view value, std::string& target) {
  const std::size_t first = value.find_first_of("0#");
  if (first == std::string_view::npos) return "no es un formato de número, por ejemplo #,##0.00";
  const std::size_t last = value.find_last_of("0#");
  const std::string_view digits = value.substr(first, last - first + 1);
  const bool onePattern = digits.find_first_not_of("0#,.") == std::string_view::npos;
  const bool onePoint = digits.find('.') == digits.rfind('.');
  return TakeIf(onePattern && onePoint, value, target, "no es un formato de número, por ejemplo #,##0.00");
}

Complaint TakeSeparator(std::string_view value, std::string& target) {
  const bool usable = value.find_first_of("0123456789+-") == std::string_view::npos;
  return TakeIf(usable, value, target, "no puede tener cifras ni signos");
}

Complaint TakeNames(std::string_view value, std::vector<std::string>& target) {
  const std::string separated = ReplaceAll(ReplaceAll(value, "\t", ","), " ", ",");
  target.clear();
  for (const std::string_view name : Split(separated, ',')) {
    if (!name.empty()) target.emplace_back(name);
  }
  return std::nullopt;
}

Complaint TakeEngine(std::string_view value, DatabaseConfiguration& target) {
  std::string names;
  for (const DatabaseEngine& engine : target.known) {
    const std::string_view name = engine.Traits().name;
    if (name == value) {
      target.engine = &engine;
      return std::nullopt;
    }
    const bool last = &engine == &target.known.back();
    names.append(names.empty() ? "" : last ? " o " : ", ").append(name);
  }
  return "debe ser " + names;
}

Complaint TakeAddress(std::string_view value, bool mayBeEmpty, std::string& target) {
  const bool usable = value.empty() ? mayBeEmpty : IsEmailAddress(value);
  return TakeIf(usable, value, target, "debe ser una dirección de correo, por ejemplo tienda@example.com");
}

Complaint TakeMailServer(std::string_view value, std::string& target) {
  std::string_view host = value;
  for (const std::string_view scheme : {"smtp://", "smtps://"}) {
    if (value.starts_with(scheme)) host = value.substr(scheme.size());
  }
  const bool hasScheme = host.size() != value.size();
  return TakeIf(value.empty() || (hasScheme && ServerAddress::Parse(host)), value, target,
                "debe ser smtp:// o smtps:// con el servidor y, si hace falta, el puerto");
}

Complaint TakeHost(std::string_view value, std::string& target) {
  return TakeIf(value.empty() || ServerAddress::Parse(value), value, target,
                "debe ser un servidor y, si hace falta, dos puntos y el puerto");
}

Complaint TakeWebAddress(std::string_view value, std::string& target) {
  const bool hasScheme = value.starts_with("http://") || value.starts_with("https://");
  const bool hasBlank = value.find_first_of(" \t\"<>") != std::string_view::npos;
  return TakeIf(value.empty() || (hasScheme && !hasBlank), value, target,
                "debe ser una dirección que comience por http:// o https://");
}

}  // namespace tolvan
