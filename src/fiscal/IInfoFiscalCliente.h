// Everything that depends on a country's tax rules for customers: how an identifier is recognised, checked and written,
// how the authority and its documents are called, and how a taxpayer's name is asked for. The host calls the members
// through the COM library by slot, so their order is fixed; the destructor stands last to leave the slots alone. Only
// ReconocerRif, the lookup and what they find are used by this program's own parts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/Currency.h"

namespace tolvan {

/// A text box of the host's customer form. Its call may throw.
class TextBoxControl {
 public:
  virtual ~TextBoxControl() = default;
  virtual void SetText(std::string_view text) = 0;
};

/// A list of that form. Its call may throw.
class ListControl {
 public:
  virtual ~ListControl() = default;

  /// Selects the entry at `index`, from 0.
  virtual void SetListIndex(std::int32_t index) = 0;
};

class IInfoFiscalCliente {
 public:
  /// Fills a customer form from the identifier as typed, which is not changed: the text box gets the normalised code,
  /// or "" when it is not a valid code; the lists, which may be null, are set to entry 0 non-taxpayer or 1 taxpayer,
  /// and 0 natural or 1 legal person. A list that refuses its entry is left alone.
  virtual void LlenarRif(TextBoxControl& txtRIF, const std::string& cmbCodigo, ListControl* cmbTipoCliente,
                         ListControl* cmbPersoneriaCliente) = 0;

  /// Whether the identifier last recognised passed one of the country's checks.
  virtual bool EsValido() const = 0;

  /// Asks the tax authority for the name of the current identifier; true when it gave one. Without a valid identifier
  /// false at once, and what the last lookup found stays. Throws what the HTTP client throws.
  virtual bool ObtenerInfoInternet() = 0;
  virtual std::string NombreRazonSocialObtenidoInternet() const = 0;

  /// The normalised identifier, or "" when it is not valid.
  virtual std::string ValorCodigo() const = 0;
  virtual bool EsAgenteDeRetencionObtenidoInternet() const = 0;
  virtual Currency PorcentajeRetencionObtenidoInternet() const = 0;

  /// The authority's name, with an article, or else with a preposition and an article.
  virtual std::string NombreEnteTributario(bool ConArticulo, bool ConDel) const = 0;
  virtual std::string NombreIdentificacionFiscal() const = 0;
  virtual std::string EtiquetaIdentificacionFiscal() const = 0;
  virtual bool UtilizaIVA() const = 0;
  virtual bool UtilizaRetencionIVA() const = 0;
  virtual std::string SiglasPredeterminadasIVA() const = 0;
  virtual std::string TituloPersonaNatural() const = 0;
  virtual std::string TituloPersonaJuridica() const = 0;
  virtual std::string TituloPersonaNaturalAbreviado() const = 0;
  virtual std::string TituloPersonaJuridicaAbreviado() const = 0;
  virtual std::string TituloContribuyente() const = 0;
  virtual std::string TituloNoContribuyente() const = 0;

  /// ValorCodigo without any "-".
  virtual std::string ValorParaReportes() const = 0;

  /// Recognises an identifier as typed and sets the object's state; `Valor` is left normalised.
  virtual void ReconocerRif(std::string& Valor) = 0;

  /// Valid, and typed without characters that do not belong there.
  virtual bool EsCodigoValido() const = 0;
  virtual bool EsRIF() const = 0;
  virtual bool EsCedula() const = 0;

  /// 1 taxpayer, 0 none.
  virtual std::int32_t TipoClienteContribuyente() const = 0;

  /// 1 legal person, 0 natural person.
  virtual std::int32_t Personeria() const = 0;
  virtual bool RIFConsultablePorInternet() const = 0;
  virtual std::string SiglasPredeterminadasISLR() const = 0;
  virtual std::string TituloDocumentoNE() const = 0;
  virtual std::string TituloDocumentoPresupuesto() const = 0;
  virtual std::string TituloDocumentoPedido() const = 0;
  virtual std::string TituloDocumentoFactura() const = 0;
  virtual std::string TituloDocumentoFacturaNotaCredito() const = 0;
  virtual std::string TituloDocumentoNotaCredito() const = 0;
  virtual std::string TituloDocumentoNotaDebito() const = 0;

  virtual ~IInfoFiscalCliente() = default;
};

}  // namespace tolvan
