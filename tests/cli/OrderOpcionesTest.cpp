#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli/DemoStoreFixture.h"
#include "support/FileContent.h"

namespace tolvan {
namespace {

using OrderOpciones = test::DemoStoreFixture;

TEST_F(OrderOpciones, ListsAllInOrderReadsByKeyOrIndexAndWrites) {
  const auto all = nlohmann::ordered_json::parse(runner.Run({"--json", "opciones"}).output);
  ASSERT_EQ(all.size(), 16U);
  EXPECT_EQ(all.begin().key(), "MicrosExp_CodigoTienda");
  EXPECT_EQ(std::next(all.begin(), 11).key(), "SVentas_OffsetAnno");

  EXPECT_EQ(runner.Run({"opciones", "0=0042", "MicrosExp_NombreArchivo=a=b ñ"}).code, 0);
  EXPECT_EQ(runner.Run({"opciones", "9", "microsexp_codigotienda"}).output,
            "MicrosExp_NombreArchivo=a=b ñ\nMicrosExp_CodigoTienda=0042\n");
}

TEST_F(OrderOpciones, ARefusedValueChangesNothing) {
  const auto result = runner.Run({"opciones", "0=0042", "4=tarde"});
  EXPECT_EQ(result.code, 1);
  EXPECT_EQ(result.messages,
            "Error al intentar guardar opciones del sistema: MicrosExp_HoraFinalVenta_Horas no admite "
            "\"tarde\"\n");
  const auto code = runner.Run({"opciones", "9=x.txt", "0=Peñón €Ω"});
  EXPECT_EQ(code.code, 1);
  EXPECT_NE(code.messages.find("MicrosExp_CodigoTienda (código de la empresa) tiene el carácter «Ω»"),
            std::string::npos);
  EXPECT_EQ(runner.Run({"opciones", "9"}).output, "MicrosExp_NombreArchivo=\n");
  EXPECT_EQ(runner.Run({"opciones", "0"}).output, "MicrosExp_CodigoTienda=0001\n");
  EXPECT_EQ(runner.Run({"opciones", "Nada=1"}).code, 2);
  EXPECT_EQ(runner.Run({"opciones", "16"}).code, 2);
}

TEST_F(OrderOpciones, ADamagedSettingsFileIsPutAsideToldAndReplacedByDefaults) {
  for (const auto& entry : std::filesystem::directory_iterator(places.folder + "/ajustes")) {
    if (entry.path().extension() == ".ajustes") test::WriteFile(entry.path(), "?");
  }
  const auto result = runner.Run({"opciones", "0"});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(result.output, "MicrosExp_CodigoTienda=codigo_local\n");
  EXPECT_NE(result.messages, "");
  EXPECT_EQ(runner.Run({"opciones", "0"}).messages, "") << "told once";
}

}  // namespace
}  // namespace tolvan
