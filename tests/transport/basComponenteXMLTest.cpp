#include "transport/TransportDocument.h"

#include <gtest/gtest.h>

#include <tuple>

#include "support/FakeHost.h"

namespace tolvan::test {
namespace {

constexpr auto missing =
    "No se encontró el componente Microsoft XML 6.0 para ejecutar ciertas funciones de Tolvan. Favor descargue e "
    "instale desde el sitio de Microsoft el componente Microsoft XML 6";
constexpr auto question =
    "Para esta función se requiere instalar el siguiente componente en este equipo:\r\n\r\nMicrosoft XML versión 6"
    "\r\n\r\nPuede instalarlo desde la siguiente dirección de descarga:\r\n\r\nhttp://ejemplo/msxml6.msi\r\n\r\n"
    "¿Desea descargar este archivo ahora?";

TEST(basComponenteXMLTest, ToldUnlessSilentAndOfferedOnlyWhenAsked) {
  const std::vector<std::tuple<bool, bool, const char*, bool, std::size_t, std::size_t>> cases = {
      {true, true, "http://ejemplo/msxml6.msi", true, 0, 0},
      {false, false, "http://ejemplo/msxml6.msi", true, 1, 0},
      {false, true, "http://ejemplo/msxml6.msi", true, 1, 1},
      {false, true, "http://ejemplo/msxml6.msi", false, 1, 1},
      {false, true, "", true, 1, 0},
  };
  for (const auto& [silent, offer, address, answer, messages, questions] : cases) {
    MissingXmlLibrary library;
    FakeDialogs dialogs;
    dialogs.yes = answer;
    basComponenteXML component(library, dialogs, "Tolvan", address);
    EXPECT_FALSE(component.XmlLibraryAvailable(silent, offer));
    ASSERT_EQ(dialogs.boxes.size(), messages);
    for (const auto& box : dialogs.boxes) {
      EXPECT_EQ(box, (FakeDialogs::Box{MessageIcon::Exclamation, "Tolvan", missing}));
    }
    EXPECT_EQ(dialogs.questions, std::vector<std::string>(questions, question));
    EXPECT_EQ(dialogs.defaults, std::vector<bool>(questions, false));
    EXPECT_EQ(library.opened, questions == 1 && answer ? address : "");
  }
}

TEST(basComponenteXMLTest, TriedOncePerProcess) {
  MissingXmlLibrary library;
  FakeDialogs dialogs;
  for (int round = 0; round < 2; ++round) {
    basComponenteXML component(library, dialogs, "Tolvan", "");
    clsDatosTransporteXMLSalida envelope(component);
    EXPECT_FALSE(envelope.NuevoDocumento(""));  // not even asked for
    EXPECT_FALSE(envelope.NuevoDocumento("DC_DefinicionItems"));
    EXPECT_FALSE(envelope.DocumentoCargado());
  }
  EXPECT_EQ(dialogs.boxes.size(), 2U);
  EXPECT_EQ(library.attempts, 1);
}

}  // namespace
}  // namespace tolvan::test
