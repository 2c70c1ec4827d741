#include "fiscal/clsInfoFiscalClienteDO.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <numeric>
#include <stdexcept>
#include <tuple>
#include <type_traits>
#include <vector>

#include "base/Calendar.h"
#include "base/NumberText.h"

namespace tolvan {
namespace {

struct Box : TextBoxControl {
  void SetText(std::string_view value) override { text = value; }
  std::string text = "untouched";
};

struct List : ListControl {
  void SetListIndex(std::int32_t value) override {
    if (value >= entries) throw std::out_of_range("too few entries");
    index = value;
  }
  std::int32_t entries = 2;
  std::int32_t index = -1;
};

clsInfoFiscalClienteDO Recognised(std::string typed) {
  clsInfoFiscalClienteDO identity;
  identity.ReconocerRif(typed);
  return identity;
}

TEST(clsInfoFiscalClienteDO, RecognisesAndFillsTheCustomerForm) {
  // Digits worked out apart from the code: over 10101234 the weighted sum is 56, and 56 modulo 11 is 1.
  const std::vector<std::tuple<const char*, const char*, bool, bool, bool, int>> cases = {
      {"101012341", "101012341", true, false, true, 1},
      {"1-01-01234-1", "101012341", true, false, true, 1},
      {"  101012341  ", "101012341", true, false, true, 1},
      {"101012348", "101012348", false, false, false, 0},
      {"rnc 101012341", "101012341", true, false, false, 1},
      {"1.01.01234.1", "101012341", true, false, false, 1},
      {"\t101012341", "101012341", true, false, false, 1},
      {"10101 2341", "101012341", true, false, false, 1},
      {"024691352", "024691352", true, false, true, 0},  // rest 0
      {"049382691", "049382691", true, false, true, 0},  // rest 1
      {"037037022", "037037022", true, false, true, 0},  // rest 9
      {"148148051", "148148051", true, false, true, 1},  // rest 10
      {"400000005", "400000005", true, false, true, 1},
      {"500000009", "500000009", true, false, true, 0},
      {"001-0000000-8", "00100000008", false, false, false, 0},
      {"001-0000000-9", "00100000009", false, true, true, 0},
      {"00113918205", "00113918205", false, true, true, 0},
      {"40212345678", "40212345678", false, true, true, 0},
      {"40212345768", "40212345768", false, false, false, 0},  // two digits changed places
      {"1010123410", "1010123410", false, false, false, 0},
      {"001139182050", "001139182050", false, false, false, 0},
      {"10101234", "10101234", false, false, false, 0},
      {"", "", false, false, false, 0},
      {"---", "", false, false, false, 0},
      {"１０１０１２３４１", "", false, false, false, 0},  // full-width digits are no digits here
  };
  for (const auto& [typed, normalised, isRnc, isCedula, isCode, personeria] : cases) {
    std::string value = typed;
    clsInfoFiscalClienteDO identity;
    identity.ReconocerRif(value);
    const bool valid = isRnc || isCedula;
    SCOPED_TRACE(typed);
    EXPECT_EQ(value, normalised);
    EXPECT_EQ(identity.EsRIF(), isRnc);
    EXPECT_EQ(identity.EsCedula(), isCedula);
    EXPECT_EQ(identity.EsValido(), valid);
    EXPECT_EQ(identity.EsCodigoValido(), isCode);
    EXPECT_EQ(identity.Personeria(), personeria);
    EXPECT_EQ(identity.TipoClienteContribuyente(), valid ? 1 : 0);
    EXPECT_EQ(identity.ValorCodigo(), valid ? normalised : "");
    EXPECT_EQ(identity.ValorParaReportes(), identity.ValorCodigo());
    Box box;
    List type, person;
    identity.LlenarRif(box, typed, &type, &person);
    EXPECT_EQ(box.text, isCode ? normalised : "");
    EXPECT_EQ(type.index, isCode ? 1 : 0);
    EXPECT_EQ(person.index, isCode ? personeria : 0);
  }
  EXPECT_FALSE(PassesCedulaCheck("0011391820G"));
  EXPECT_TRUE(PassesCedulaCheck("0000000009a"));  // read as hexadecimal: 9 from the 9, and 10 counts 1 + 0
}

TEST(clsInfoFiscalClienteDO, AListThatRefusesItsEntryStopsNothing) {
  clsInfoFiscalClienteDO identity;
  Box box;
  List shortList;
  shortList.entries = 1;
  identity.LlenarRif(box, "101012341", nullptr, &shortList);
  EXPECT_EQ(box.text, "101012341");
}

/// What members answer, and the places that the compiler gave them: a host calls by place. A pointer to a virtual
/// member holds one more than its offset in the table.
struct Members {
  template <class Member>
  void Take(Member member) {
    std::uintptr_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    slots.push_back((offset - 1) / sizeof(void*));
    if constexpr (std::is_invocable_v<Member, const IInfoFiscalCliente&>) {
      const auto answer = std::invoke(member, static_cast<const IInfoFiscalCliente&>(identity));
      using Answer = std::remove_const_t<decltype(answer)>;
      if constexpr (std::is_same_v<Answer, std::string>) answers += answer;
      if constexpr (std::is_same_v<Answer, bool>) answers += answer ? "yes" : "no";
      if constexpr (std::is_same_v<Answer, std::int32_t>) answers += std::to_string(answer);
      if constexpr (std::is_same_v<Answer, Currency>) answers += answer.ToText();
      answers += '|';
    }
  }
  template <class... Each>
  void TakeAll(Each... members) {
    (Take(members), ...);
  }

  const clsInfoFiscalClienteDO identity = Recognised("1-01-01234-1");
  std::string answers;  // each with a bar after it
  std::vector<std::uintptr_t> slots;
};

TEST(clsInfoFiscalClienteDO, AnswersInThirtyFiveSlots) {
  using It = IInfoFiscalCliente;
  Members members;
  members.TakeAll(&It::LlenarRif, &It::EsValido, &It::ObtenerInfoInternet, &It::NombreRazonSocialObtenidoInternet,
                  &It::ValorCodigo, &It::EsAgenteDeRetencionObtenidoInternet, &It::PorcentajeRetencionObtenidoInternet,
                  &It::NombreEnteTributario, &It::NombreIdentificacionFiscal, &It::EtiquetaIdentificacionFiscal,
                  &It::UtilizaIVA, &It::UtilizaRetencionIVA, &It::SiglasPredeterminadasIVA, &It::TituloPersonaNatural,
                  &It::TituloPersonaJuridica, &It::TituloPersonaNaturalAbreviado, &It::TituloPersonaJuridicaAbreviado,
                  &It::TituloContribuyente, &It::TituloNoContribuyente, &It::ValorParaReportes, &It::ReconocerRif,
                  &It::EsCodigoValido, &It::EsRIF, &It::EsCedula, &It::TipoClienteContribuyente, &It::Personeria,
                  &It::RIFConsultablePorInternet, &It::SiglasPredeterminadasISLR, &It::TituloDocumentoNE,
                  &It::TituloDocumentoPresupuesto, &It::TituloDocumentoPedido, &It::TituloDocumentoFactura,
                  &It::TituloDocumentoFacturaNotaCredito, &It::TituloDocumentoNotaCredito,
                  &It::TituloDocumentoNotaDebito);
  EXPECT_EQ(members.answers,
            "yes||101012341|no|0.0000|RNC|RNC:|yes|no|ITBIS|Persona Física|Persona Jurídica|P. Física|P. "
            "Jurídica|Contribuyente|No Contribuyente|101012341|yes|yes|no|1|1|yes|I.S.L.R.|Nota de "
            "Entrega|Cotización|Pedido|Factura|Factura o Nota de Crédito|Nota de Crédito|Nota de Débito|");
  std::vector<std::uintptr_t> inOrder(35);
  std::iota(inOrder.begin(), inOrder.end(), 0);
  EXPECT_EQ(members.slots, inOrder);
  const clsInfoFiscalClienteDO identity;
  EXPECT_EQ(identity.NombreEnteTributario(true, true), "la DGII");
  EXPECT_EQ(identity.NombreEnteTributario(true, false), "la DGII");
  EXPECT_EQ(identity.NombreEnteTributario(false, true), "de la DGII");
  EXPECT_EQ(identity.NombreEnteTributario(false, false), "DGII");
}

}  // namespace
}  // namespace tolvan
