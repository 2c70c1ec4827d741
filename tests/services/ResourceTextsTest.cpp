// Every text that is agreed with the host by number, as a user reads it.
#include "services/ResourceTexts.h"

#include <gtest/gtest.h>

#include "support/FakeHost.h"

namespace tolvan {
namespace {

TEST(ResourceTexts, AreTheAgreedOnes) {
  const std::vector<std::pair<std::int32_t, std::string>> agreed = {
      {101, "&Aceptar"},
      {102, "&Cancelar"},
      {103, "&Cerrar"},
      {1001, "Archivo Ventas Vexlor"},
      {1002, "Servidor Central de Ventas"},
      {1003, "Precios Movilnet 2010"},
      {1004, "Terminal de Datos Tolvan"},
      {1005, "Datos desde Hoja de Excel"},
      {1006, "RNC a Clientes (Rep. Dom.)"},
      {10001, "No se pueden guardar las opciones del sistema. ¿Desea reintentar?"},
      {10002, "Error en acceso a la ruta/archivo:"},
      {10003, "La operación finalizó con éxito."},
      {35000, "Código de la empresa:"},
      {35001, "Fecha Movimiento:"},
      {35002, "Hora de fin de Jornada:"},
      {35003, "Guardar archivo en la siguiente carpeta destino:"},
      {35004, "Enviar archivo generado por e-mail"},
      {35005, "Dirección e-mail:"},
      {35006,
       "Esta ventana permite exportar ciertos datos desde %1 a otros formatos que se utilizan en otros sistemas de "
       "información."},
      {35007, "Seleccione primero una categoría a la izquierda de la ventana para Importar/Exportar datos."},
      {35008, "Ocurrió uno o más errores en la operación:"},
      {35009, "Seleccionar carpeta para guardar los archivos exportados."},
      {35010, "Forzar Nombre Archivo:"},
      {35388, "Error al intentar cargar opciones del sistema"},
      {35389, "Error al intentar guardar opciones del sistema"},
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
      {45200, "No se puede enviar archivo por e-mail"},
      {45201, "Error al intentar enviar e-mail"},
      {45202, "Error de inicio de sesión o inicio de sesión cancelada"},
      {45203, "Error no definido"},
      {45204, "Memoria insuficiente"},
      {45205, "Error no especificado"},
      {45206, "Error general en acceso al archivo a adjuntarse"},
      {45207, "Error general al procesar archivo adjunto"},
      {45208, "Procedimiento cancelado por el usuario"},
      {45209,
       "No se encuentra los servicios de mensajería de Windows. Favor (re)instale y configure en el sistema algún "
       "programa de mensajería (ejemplo: Microsoft Outlook Express) para reestablecer esta característica."},
      {50001, "Importar/Exportar Datos"},
  };
  for (const auto& [id, text] : agreed) EXPECT_EQ(ResourceText(id), text) << id;
  test::FakeHost host;
  EXPECT_EQ(LoadText(host.application, 35006).find("%1"), std::string::npos);
  EXPECT_EQ(LoadText(host.application, 99), "");
}

}  // namespace
}  // namespace tolvan
