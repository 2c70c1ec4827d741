// What is agreed with the host and with other programs: the settings and the texts.
#include "services/ImpExpSettings.h"

#include <gtest/gtest.h>

#include "services/ComponentContext.h"
#include "services/ResourceTexts.h"
#include "support/FakeHost.h"

namespace tolvan {
namespace {

using test::FakeHost;

// Other programs read these settings by index and by kind: the whole sequence is a contract. Numbers are marked "#".
TEST(ImpExpSettings, DefinesTheSectionInItsOrderAndThenLoadsIt) {
  FakeHost host;
  const std::vector<std::string> expected = {
      "IMPEXP|0|MicrosExp_CodigoTienda|codigo_local|00",
      "IMPEXP|1|MicrosExp_FechaReporte_Dia|#1|10",
      "IMPEXP|2|MicrosExp_FechaReporte_Mes|#2|10",
      "IMPEXP|3|MicrosExp_FechaReporte_Anno|#2024|10",
      "IMPEXP|4|MicrosExp_HoraFinalVenta_Horas|#19|10",
      "IMPEXP|5|MicrosExp_HoraFinalVenta_Minutos|#0|10",
      R"(IMPEXP|6|MicrosExp_CarpetaDestino|C:\|00)",
      "IMPEXP|7|MicrosExp_EnviarEmail|#0|10",
      "IMPEXP|8|MicrosExp_EnviarDireccionEmail|reportes@example.com|00",
      "IMPEXP|9|MicrosExp_NombreArchivo||00",
      "IMPEXP|10|SVentas_DireccionServidor|localhost|00",
      "IMPEXP|13|SVentas_OffsetAnno|#2006|10",
      "IMPEXP|12|SVentas_OffsetMes|#1|00",
      "IMPEXP|11|SVentas_OffsetDia|#1|00",
      "IMPEXP|14|MicrosExp_MostrarComillas|#1|10",
      "IMPEXP|15|PreciosMovilnet_RutaUltimoArchivo||00",
      "load IMPEXP",
  };
  EXPECT_EQ(host.application.settings.definitions, expected);
}

TEST(ImpExpSettings, AnUnreadableValueIsZeroOrEmptyAndARefusedOneIsTheApplicationError) {
  FakeHost host;
  host.application.settings.values["4"] = "tarde";
  host.application.settings.values.erase("0");
  EXPECT_EQ(host.settings.Integer(Setting::HoraFinalVentaHoras), 0);
  EXPECT_EQ(host.settings.Text(Setting::CodigoTienda), "");

  host.application.settings.refuses = true;
  try {
    host.settings.SetInteger(Setting::OffsetDia, 3);
    FAIL() << "a refused value was taken";
  } catch (const ApplicationError& error) {
    EXPECT_STREQ(error.what(), "Error al intentar guardar opciones del sistema");
    EXPECT_EQ(static_cast<std::uint32_t>(error.Code()), 0x800400FFU);
  }
}

// The texts that are agreed with the host by number, of which no test of window, export or import quotes the whole.
TEST(ResourceTexts, AreTheAgreedOnes) {
  const std::vector<std::pair<std::int32_t, std::string>> agreed = {
      {103, "&Cerrar"},
      {10001, "No se pueden guardar las opciones del sistema. ¿Desea reintentar?"},
      {35388, "Error al intentar cargar opciones del sistema"},
      {35721,
       "Estos renglones representan Nuevos Items que se crearán en la base de datos Tolvan con el código que aparece "
       "en la primera columna. Si observa algún renglón de esta lista que ya corresponde con un Item previamente "
       "creado en Tolvan haga click sobre el mismo con el botón secundario del Mouse."},
      {35722,
       "Estos renglones ya estan enlazados con Items en Tolvan, segun el código de Item que aparece en la segunda "
       "columna. Los precios de los Items se actualizarán. Si hay algún renglón que esté enlazado a un Item "
       "equivocado, haga click sobre el mismo con el botón secundario del Mouse."},
      {35723,
       "Estos son renglones que no están asociados como Items existentes en Tolvan, pero que tampoco se pueden crear "
       "porque los códigos entrarían en conflicto con códigos de Item previamente registrados. Para acomodar cada "
       "renglón haga click sobre el mismo con el botón secundario del Mouse."},
      {45203, "Error no definido"},
      {45209,
       "No se encuentra los servicios de mensajería de Windows. Favor (re)instale y configure en el sistema algún "
       "programa de mensajería (ejemplo: Microsoft Outlook Express) para reestablecer esta característica."},
  };
  for (const auto& [id, text] : agreed) EXPECT_EQ(ResourceText(id), text) << id;
  EXPECT_EQ(ResourceText(99), "");
}

}  // namespace
}  // namespace tolvan
