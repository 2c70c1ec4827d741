// The fiscal identity rules of the Dominican Republic: the authority is the DGII, the identifiers are the RNC of
// companies (9 digits) and the cédula of persons (11 digits), each with a check digit. The class is a small state
// machine: ReconocerRif sets the state, the rest reads it. Cheap to create; nothing is shared between objects, and no
// short identifier allocates memory.
#pragma once

#include <optional>
#include <string_view>

#include "fiscal/IInfoFiscalCliente.h"
#include "fiscal/TaxpayerLookup.h"

namespace tolvan {

/// The check digit of a company's registry number, modulus 11. Nothing unless `body` is exactly eight digits.
std::optional<char> ExpectedRncCheckDigit(std::string_view body);

/// The sum of the characters' values, weighted 1, 2, 1, 2, … from the last one, each product counted by its digits, is
/// a multiple of `modulus`. False unless the text is exactly eleven hexadecimal digits.
bool PassesCedulaCheck(std::string_view text, int modulus = 10);

class clsInfoFiscalClienteDO final : public IInfoFiscalCliente {
 public:
  /// Without a lookup, ObtenerInfoInternet finds nothing. `lookup` must outlive this object.
  explicit clsInfoFiscalClienteDO(const TaxpayerLookup* lookup = nullptr) : lookup_(lookup) {}

  void LlenarRif(TextBoxControl& txtRIF, const std::string& cmbCodigo, ListControl* cmbTipoCliente,
                 ListControl* cmbPersoneriaCliente) override;
  bool EsValido() const override { return isRnc_ || isCedula_; }
  bool ObtenerInfoInternet() override;
  std::string NombreRazonSocialObtenidoInternet() const override { return foundName_; }
  std::string ValorCodigo() const override;
  bool EsAgenteDeRetencionObtenidoInternet() const override { return isWithholdingAgent_; }
  Currency PorcentajeRetencionObtenidoInternet() const override { return withholdingPercentage_; }
  std::string NombreEnteTributario(bool ConArticulo, bool ConDel) const override;
  std::string NombreIdentificacionFiscal() const override;
  std::string EtiquetaIdentificacionFiscal() const override;
  bool UtilizaIVA() const override { return true; }
  bool UtilizaRetencionIVA() const override { return false; }
  std::string SiglasPredeterminadasIVA() const override;
  std::string TituloPersonaNatural() const override;
  std::string TituloPersonaJuridica() const override;
  std::string TituloPersonaNaturalAbreviado() const override;
  std::string TituloPersonaJuridicaAbreviado() const override;
  std::string TituloContribuyente() const override;
  std::string TituloNoContribuyente() const override;
  std::string ValorParaReportes() const override;
  void ReconocerRif(std::string& Valor) override;
  bool EsCodigoValido() const override { return EsValido() && !hasInvalidCharacters_; }
  bool EsRIF() const override { return isRnc_; }
  bool EsCedula() const override { return isCedula_; }
  std::int32_t TipoClienteContribuyente() const override { return EsValido() ? 1 : 0; }
  std::int32_t Personeria() const override { return personeria_; }
  bool RIFConsultablePorInternet() const override { return true; }
  std::string SiglasPredeterminadasISLR() const override;
  std::string TituloDocumentoNE() const override;
  std::string TituloDocumentoPresupuesto() const override;
  std::string TituloDocumentoPedido() const override;
  std::string TituloDocumentoFactura() const override;
  std::string TituloDocumentoFacturaNotaCredito() const override;
  std::string TituloDocumentoNotaCredito() const override;
  std::string TituloDocumentoNotaDebito() const override;

  /// Always empty: the page shows no such number.
  std::string NitObtenidoInternet() const { return foundNit_; }

  /// What the last lookup came to, kept apart from the boolean.
  const LookupResult& LastLookup() const { return lastLookup_; }

 private:
  void ClearLookup();

  std::string prefix_;  // never assigned here, but part of every code
  std::string body_;
  std::string checkDigit_;
  std::int32_t personeria_ = 0;
  bool hasInvalidCharacters_ = false;
  bool isRnc_ = false;
  bool isCedula_ = false;
  std::string foundName_;
  std::string foundNit_;
  bool isWithholdingAgent_ = false;
  Currency withholdingPercentage_;
  const TaxpayerLookup* lookup_;
  LookupResult lastLookup_;
};

}  // namespace tolvan
