#include "ui/CollectorPanel.h"

#include <gmock/gmock.h>

#include "support/FakeHost.h"
#include "xml/PugiXmlLibrary.h"

namespace tolvan::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr auto path = "/app/colector.tolpak";

class CollectorPanelTest : public ::testing::Test {
 protected:
  CollectorPanelTest() {
    host_.services.clock.now.date = Date::FromParts(2026, 3, 5);
    host_.services.dialogs.answer = path;
  }

  FakeHost host_;
  FakeDialogs& dialogs_ = host_.services.dialogs;
  std::map<std::string, std::string>& files_ = host_.services.files.contents;
  PugiXmlLibrary library_;
  CollectorPanel panel_{host_.context, library_};
};

TEST_F(CollectorPanelTest, ThePurposeDecidesTheFile) {
  panel_.cmdDCExportarItems_Click();
  EXPECT_THAT(dialogs_.questions, ElementsAre("Guardar Archivo de Transporte Archivo de Transporte (*.tolpak)|"
                                              "*.tolpak| Articulos 20260305.tolpak"));
  EXPECT_THAT(files_[path], HasSubstr("<MultiplesAreas>1</MultiplesAreas>"));
  EXPECT_EQ(host_.application.fakeDatabase.statements.back().ParameterText(),
            "SELECT idDeposito FROM Depositos WHERE Tipo=0 ");

  panel_.opProposito_Click(CollectorPurpose::Receiving);
  panel_.cmdDCExportarItems_Click();
  EXPECT_THAT(files_[path], HasSubstr("<MultiplesAreas>0</MultiplesAreas>"));
  EXPECT_THAT(host_.application.fakeDatabase.statements.back().ParameterText(), HasSubstr("DisponibleEntrada"));
  EXPECT_EQ(dialogs_.boxes.size(), 2U);
}

TEST_F(CollectorPanelTest, WhatIsToldAndWhatIsNot) {
  dialogs_.answer.reset();
  panel_.cmdDCExportarItems_Click();  // cancelled
  dialogs_.answer = path;
  const HostError failure(HostErrorKind::Unreachable, "no está");
  host_.application.fakeDatabase.answer = [&](const SqlStatement&) -> std::unique_ptr<Recordset> { throw failure; };
  panel_.cmdDCExportarItems_Click();  // a query that cannot be opened
  EXPECT_THAT(dialogs_.boxes, IsEmpty());
  host_.application.databaseFailure = failure;
  panel_.cmdDCExportarItems_Click();
  EXPECT_THAT(dialogs_.boxes,
              ElementsAre(FakeDialogs::Box{MessageIcon::Exclamation, "Importar/Exportar Datos",
                                           "Ocurrió uno o más errores en la operación:\r\n" + TextForPeople(failure)}));
  EXPECT_THAT(files_, IsEmpty());
}

}  // namespace
}  // namespace tolvan::test
