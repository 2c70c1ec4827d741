// The texts that are agreed with the host by number, of which no test of window, export or import quotes the whole.
#include "services/ResourceTexts.h"

#include <gtest/gtest.h>

#include "support/FakeHost.h"

namespace tolvan {
namespace {

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
  test::FakeHost host;
  EXPECT_EQ(LoadText(host.application, 35006).find("%1"), std::string::npos);
  EXPECT_EQ(LoadText(host.application, 99), "");
}

}  // namespace
}  // namespace tolvan
