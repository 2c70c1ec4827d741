#include "fiscal/clsInfoFiscalClienteDO.h"

#include <array>
#include <cstddef>

#include "base/Text.h"

namespace tolvan {
namespace {

/// Keeps the digits of `value`, in place. True when anything else than digits and "-" was dropped.
bool KeepDigits(std::string& value) {
  bool dropped = false;
  std::size_t kept = 0;
  const std::string_view typed = TrimBlanks(value);
  // Reading runs ahead of writing. No case mapping is needed: it neither makes a digit nor takes one away.
  for (const char c : typed) {
    if (c >= '0' && c <= '9') {
      value[kept++] = c;
    } else if (c != '-') {
      dropped = true;
    }
  }
  value.resize(kept);
  return dropped;
}

void Select(ListControl* list, std::int32_t index) noexcept {
  if (list == nullptr) return;
  try {
    list->SetListIndex(index);
  } catch (...) {
    return;  // a list with too few entries stays as it is
  }
}

/// -1 for what is no hexadecimal digit.
int HexadecimalValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

std::optional<char> ExpectedRncCheckDigit(std::string_view body) {
  constexpr std::array<int, 8> weights = {7, 9, 8, 6, 5, 4, 3, 2};
  if (body.size() != weights.size()) return std::nullopt;
  int sum = 0;
  for (std::size_t index = 0; index < weights.size(); ++index) {
    if (body[index] < '0' || body[index] > '9') return std::nullopt;
    sum += (body[index] - '0') * weights[index];
  }
  const int rest = sum % 11;
  if (rest == 0) return '2';
  if (rest == 1) return '1';
  return static_cast<char>('0' + 11 - rest);
}

bool PassesCedulaCheck(std::string_view text, int modulus) {
  if (text.size() != 11) return false;
  int total = 0;
  int weight = 1;
  for (std::size_t left = text.size(); left > 0; --left) {
    const int value = HexadecimalValue(text[left - 1]);
    if (value < 0) return false;
    const int product = value * weight;
    total += product % modulus + product / modulus;
    weight = 3 - weight;
  }
  return total % modulus == 0;
}

void clsInfoFiscalClienteDO::LlenarRif(TextBoxControl& txtRIF, const std::string& cmbCodigo,
                                       ListControl* cmbTipoCliente, ListControl* cmbPersoneriaCliente) {
  std::string typed = cmbCodigo;
  ReconocerRif(typed);
  const bool valid = EsCodigoValido();
  Select(cmbPersoneriaCliente, valid ? Personeria() : 0);
  Select(cmbTipoCliente, valid ? TipoClienteContribuyente() : 0);
  txtRIF.SetText(valid ? ValorCodigo() : "");
}

void clsInfoFiscalClienteDO::ReconocerRif(std::string& Valor) {
  checkDigit_.clear();
  personeria_ = 0;
  isRnc_ = false;
  isCedula_ = false;
  hasInvalidCharacters_ = KeepDigits(Valor);
  body_ = Valor;
  if (Valor.size() == 9 || Valor.size() == 11) {
    checkDigit_ = Valor.back();
    body_.pop_back();
  }
  isRnc_ = !checkDigit_.empty() && ExpectedRncCheckDigit(body_) == checkDigit_.front();
  if (isRnc_) {
    personeria_ = body_.front() == '1' || body_.front() == '4' ? 1 : 0;
  } else {
    isCedula_ = PassesCedulaCheck(Valor);
  }
}

void clsInfoFiscalClienteDO::ClearLookup() {
  foundName_.clear();
  foundNit_.clear();
  isWithholdingAgent_ = false;
  withholdingPercentage_ = Currency();
  lastLookup_ = LookupResult();
}

bool clsInfoFiscalClienteDO::ObtenerInfoInternet() {
  if (!EsValido()) return false;
  ClearLookup();
  if (lookup_ == nullptr) {
    lastLookup_.outcome = LookupOutcome::NotConfigured;
    return false;
  }
  lastLookup_ = lookup_->Ask(ValorCodigo());
  foundName_ = lastLookup_.name;
  return !foundName_.empty();
}

std::string clsInfoFiscalClienteDO::ValorCodigo() const {
  return EsValido() ? prefix_ + body_ + checkDigit_ : std::string();
}

std::string clsInfoFiscalClienteDO::ValorParaReportes() const {
  return ReplaceAll(ValorCodigo(), "-", "");
}

std::string clsInfoFiscalClienteDO::NombreEnteTributario(bool ConArticulo, bool ConDel) const {
  if (ConArticulo) return "la DGII";
  return ConDel ? "de la DGII" : "DGII";
}

std::string clsInfoFiscalClienteDO::NombreIdentificacionFiscal() const {
  return "RNC";
}
std::string clsInfoFiscalClienteDO::EtiquetaIdentificacionFiscal() const {
  return NombreIdentificacionFiscal() + ":";
}
std::string clsInfoFiscalClienteDO::SiglasPredeterminadasIVA() const {
  return "ITBIS";
}
std::string clsInfoFiscalClienteDO::TituloPersonaNatural() const {
  return "Persona Física";
}
std::string clsInfoFiscalClienteDO::TituloPersonaJuridica() const {
  return "Persona Jurídica";
}
std::string clsInfoFiscalClienteDO::TituloPersonaNaturalAbreviado() const {
  return "P. Física";
}
std::string clsInfoFiscalClienteDO::TituloPersonaJuridicaAbreviado() const {
  return "P. Jurídica";
}
std::string clsInfoFiscalClienteDO::TituloContribuyente() const {
  return "Contribuyente";
}
std::string clsInfoFiscalClienteDO::TituloNoContribuyente() const {
  return "No Contribuyente";
}
std::string clsInfoFiscalClienteDO::SiglasPredeterminadasISLR() const {
  return "I.S.L.R.";
}
std::string clsInfoFiscalClienteDO::TituloDocumentoNE() const {
  return "Nota de Entrega";
}
std::string clsInfoFiscalClienteDO::TituloDocumentoPresupuesto() const {
  return "Cotización";
}
std::string clsInfoFiscalClienteDO::TituloDocumentoPedido() const {
  return "Pedido";
}
std::string clsInfoFiscalClienteDO::TituloDocumentoFactura() const {
  return "Factura";
}
std::string clsInfoFiscalClienteDO::TituloDocumentoFacturaNotaCredito() const {
  return "Factura o Nota de Crédito";
}
std::string clsInfoFiscalClienteDO::TituloDocumentoNotaCredito() const {
  return "Nota de Crédito";
}
std::string clsInfoFiscalClienteDO::TituloDocumentoNotaDebito() const {
  return "Nota de Débito";
}

}  // namespace tolvan
