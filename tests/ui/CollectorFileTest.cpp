#include <gmock/gmock.h>

#include "ui/OptionsFixture.h"
#include "xml/PugiXmlLibrary.h"

namespace tolvan {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

struct CollectorFile : test::OptionsFixture {
  PugiXmlLibrary library;
  frmOpciones window{host.context, view, {tools.imports, library}};
  test::FakeDatabase& database = host.application.fakeDatabase;
};

TEST_F(CollectorFile, IsMadeForItsPurposeAndWhatFailsIsToldOnce) {
  constexpr auto path = "/app/colector.tolpak";
  std::string& written = host.services.files.contents[path];
  host.services.clock.now.date = Date::FromParts(2026, 3, 5);
  window.cmdDCExportarItems_Click();  // cancelled
  EXPECT_TRUE(boxes.empty());
  dialogs.answer = path;
  window.cmdDCExportarItems_Click();
  EXPECT_EQ(dialogs.questions.back(),
            "Guardar Archivo de Transporte Archivo de Transporte (*.tolpak)|*.tolpak| Articulos 20260305.tolpak");
  EXPECT_THAT(written, HasSubstr("<MultiplesAreas>1</MultiplesAreas>"));
  EXPECT_EQ(database.statements.back().ParameterText(), "SELECT idDeposito FROM Depositos WHERE Tipo=0 ");
  window.opProposito_Click(CollectorPurpose::Receiving);
  window.cmdDCExportarItems_Click();
  EXPECT_THAT(written, HasSubstr("<MultiplesAreas>0</MultiplesAreas>"));
  EXPECT_THAT(database.statements.back().ParameterText(), HasSubstr("DisponibleEntrada"));
  EXPECT_EQ(boxes.size(), 2U);

  boxes.clear();
  const HostError failure(HostErrorKind::Unreachable, "no está");
  database.answer = [&](const SqlStatement&) -> std::unique_ptr<Recordset> { throw failure; };
  window.cmdDCExportarItems_Click();
  EXPECT_TRUE(boxes.empty()) << "a query that cannot be opened ends it without a word";
  host.application.databaseFailure = failure;
  window.cmdDCExportarItems_Click();
  EXPECT_THAT(boxes, ElementsAre(Box{MessageIcon::Exclamation, "Importar/Exportar Datos",
                                     "Ocurrió uno o más errores en la operación:\r\n" + TextForPeople(failure)}));
}

}  // namespace
}  // namespace tolvan
