#include <array>
#include <string_view>

#include "base/Calendar.h"
#include "base/NumberText.h"
#include "base/Text.h"
#include "cli/demo/DemoData.h"
#include "fiscal/clsInfoFiscalClienteDO.h"

namespace tolvan {
namespace {

constexpr std::array<std::string_view, 20> words = {
    "COMERCIAL",  "INVERSIONES", "SERVICIOS",   "CONSTRUCTORA", "DISTRIBUIDORA", "FERRETERÍA", "FARMACIA",
    "COLMADO",    "TRANSPORTE",  "IMPORTADORA", "RODRÍGUEZ",    "MARTÍNEZ",      "PEÑA",       "NÚÑEZ",
    "DEL CARIBE", "QUISQUEYA",   "& ASOCIADOS", "SAN JOSÉ",     "LA ALTAGRACIA", "DEL CIBAO"};
constexpr std::array<std::string_view, 4> companyForms = {"SRL", "SA", "EIRL", "C POR A"};
constexpr std::array<std::string_view, 3> trades = {"VENTA AL POR MENOR", "SERVICIOS", "CONSTRUCCIÓN"};

/// The factors share nothing with the moduli, so that different numbers give different bodies that look unordered.
std::string CompanyCode(std::uint32_t number) {
  const auto spread = static_cast<std::uint32_t>(std::uint64_t{number} * 7'654'321 % 20'000'000);
  const std::string body = (spread < 10'000'000 ? "1" : "4") + PaddedNumber(static_cast<int>(spread % 10'000'000), 7);
  return body + *ExpectedRncCheckDigit(body);
}

std::string PersonCode(std::uint32_t number) {
  const auto spread = static_cast<std::uint32_t>(std::uint64_t{number} * 3'456'789 % 10'000'000);
  std::string code = PaddedNumber(static_cast<int>(spread % 130) + 1, 3) + PaddedNumber(static_cast<int>(spread), 7);
  code += '0';
  while (!PassesCedulaCheck(code)) ++code.back();
  return code;
}

}  // namespace

DemoTaxpayer MakeDemoTaxpayer(std::uint32_t number, DemoRandom& random) {
  const bool company = number % 5 < 2;
  DemoTaxpayer taxpayer{.code = company ? CompanyCode(number) : PersonCode(number), .name = {}};
  for (std::uint32_t left = 2 + random.Below(3); left > 0; --left) {
    if (!taxpayer.name.empty()) taxpayer.name += ' ';
    taxpayer.name += words[random.Below(words.size())];
  }
  if (company) taxpayer.name.append(" ").append(companyForms[random.Below(companyForms.size())]);
  return taxpayer;
}

std::string RegistryLineOf(const DemoTaxpayer& taxpayer, DemoRandom& random) {
  std::string line = taxpayer.code + '|' + taxpayer.name + "||";
  line.append(trades[random.Below(trades.size())]).append("|||||");
  line += PaddedNumber(static_cast<int>(random.Below(28)) + 1, 2) + '/' +
          PaddedNumber(static_cast<int>(random.Below(12)) + 1, 2) + '/' + std::to_string(1980 + random.Below(44));
  return ToWindows1252(line.append("|ACTIVO|NORMAL\r\n"), '?');
}

std::string MakeDemoRegistry(std::uint32_t lines) {
  DemoRandom random(lines);
  std::string content;
  for (std::uint32_t number = 0; number < lines; ++number) {
    content += RegistryLineOf(MakeDemoTaxpayer(number, random), random);
  }
  return content;
}

}  // namespace tolvan
