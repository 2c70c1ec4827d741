#include "store/HostConfiguration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/ThrownBy.h"

namespace tolvan {
namespace {

using testing::HasSubstr;

HostConfiguration Parse(std::string_view content) {
  return ParseHostConfiguration(content, "/t/tolvan.ini");
}

TEST(HostConfiguration, TakesWhatNamesNothing) {
  for (const char* content : {"", "\xEF\xBB\xBF", "\r\n; nada\r\n[host]", "[xml]\n[host]\n"}) {
    EXPECT_EQ(WriteHostConfiguration(Parse(content)), WriteHostConfiguration(HostConfiguration()));
  }
}

TEST(HostConfiguration, ReadsValuesAndComments) {
  const HostConfiguration c = Parse(
      "\xEF\xBB\xBF; comentario\r\n"
      " [host] ; la tienda\r\n"
      "producto =  Mi Ñandú; S.A. ; el nombre\r\n"
      "\ttienda=0042\t; número\r\n"
      "permisos = a, b\tc,,d ; cuatro\r\n"
      "separador = ;nada\r\n"
      "[base_de_datos]\r\n"
      "motor = postgresql\r\n"
      "conexion = Driver={PostgreSQL};Server=bd;Pwd=a=b;Database=t ;fin\r\n"
      "[dgii]\nservidor=localhost:8080\nviewstate = /wEPDwUK+a==\n"
      "[host]\ndiagnostico = 1\n"
      "[correo]\nservidor = smtps://[::1]:465\ndestinatario = ana@example.com");
  EXPECT_EQ(c.product, "Mi Ñandú; S.A.");
  EXPECT_EQ(c.storeId, "0042");
  EXPECT_EQ(c.permissions, (std::vector<std::string>{"a", "b", "c", "d"}));
  EXPECT_EQ(c.separator, "");
  EXPECT_EQ(c.database.engine->Traits().name, "postgresql");
  EXPECT_EQ(c.database.connection, "Driver={PostgreSQL};Server=bd;Pwd=a=b;Database=t");
  EXPECT_EQ(c.lookup.host, "localhost:8080");
  EXPECT_EQ(c.lookup.viewState, "/wEPDwUK+a==");
  EXPECT_TRUE(c.diagnostic);
  EXPECT_EQ(c.mail.server, "smtps://[::1]:465");
  EXPECT_EQ(c.mail.defaultRecipient, "ana@example.com");
  EXPECT_TRUE(Parse("[host]\npermisos =\n").permissions.empty());
}

struct BadLine {
  const char* content;
  int line;
  const char* cause;
};

TEST(HostConfiguration, NamesFileLineAndCause) {
  const BadLine cases[] = {
      {"tienda = 1\n", 1, "antes de la primera sección"},
      {"[host]\n\n[otra]\nx = 1\n", 3, "«otra» no existe"},
      {"[host\n", 1, "corchetes"},
      {"[]\n", 1, "corchetes"},
      {"[host]\r\ntiendas = 1\r\n", 2, "«tiendas» no existe en [host]"},
      {"[host]\nmotor = sqlite\n", 2, "no existe en [host]"},
      {"[host]\ntienda\n", 2, "«clave = valor»"},
      {"[host]\ntienda = 1\n[xml]\n[host]\ntienda = 1\n", 5, "ya está en la línea 2"},
      {"[host]\ntienda = ; vacía\n", 2, "vacío"},
      {"[host]\ncompania = uno\n", 2, "número entero"},
      {"[host]\nsede = -1\n", 2, "número entero"},
      {"[host]\ninventario = 2147483648\n", 2, "número entero"},
      {"[host]\ndiagnostico = si\n", 2, "0 o 1"},
      {"[host]\nformato_dinero = dinero\n", 2, "formato"},
      {"[host]\nformato_dinero = 0.0.0\n", 2, "formato"},
      {"[host]\nseparador = 0\n", 2, "cifras"},
      {"[host]\nseparador = -\n", 2, "cifras"},
      {"[base_de_datos]\nmotor = oracle\n", 2, "sqlite, sqlserver"},
      {"[base_de_datos]\nconexion =\n", 2, "vacío"},
      {"[base_de_datos]\nespera = 0\n", 2, "de 1 a 86400"},
      {"[correo]\nservidor = 127.0.0.1:25\n", 2, "smtp://"},
      {"[correo]\nservidor = http://correo\n", 2, "smtp://"},
      {"[correo]\nservidor = smtp://correo:70000\n", 2, "smtp://"},
      {"[correo]\nservidor = smtp://:25\n", 2, "smtp://"},
      {"[correo]\nservidor = smtp://ana@correo\n", 2, "smtp://"},
      {"[correo]\nremitente =\n", 2, "dirección de correo"},
      {"[correo]\ndestinatario = ana@\n", 2, "dirección de correo"},
      {"[dgii]\nservidor = http://dgii\n", 2, "servidor"},
      {"[dgii]\nservidor = dgii:puerto\n", 2, "puerto"},
      {"[xml]\ndescarga = ftp://x\n", 2, "http://"},
      {"[host]\n; a\xF1o\n", 2, "UTF-8"},
      {"[host]\nproducto = a\rb\n", 2, "control"},
      {"\xFF\xFE[\n", 1, "UTF-8"},
  };
  for (const BadLine& one : cases) {
    SCOPED_TRACE(one.content);
    const HostError error = test::ThrownBy([&] { Parse(one.content); });
    EXPECT_EQ(error.Kind(), HostErrorKind::Configuration);
    EXPECT_THAT(error.what(), HasSubstr("/t/tolvan.ini, línea " + std::to_string(one.line) + ": "));
    EXPECT_THAT(error.what(), HasSubstr(one.cause));
  }
  EXPECT_THROW(Parse(std::string_view("[host]\nproducto = a\0b\n", 21)), HostError);
  const HostError several = test::ThrownBy([] { Parse("[host]\nsede = x\ntienda = 1\ncompania = y\n"); });
  EXPECT_THAT(several.what(), testing::AllOf(HasSubstr("línea 2"), HasSubstr("línea 4"))) << "all at once";
}

TEST(HostConfiguration, WritesEveryKeySoThatItReadsBack) {
  HostConfiguration c;
  c.filePath = "/t/tolvan.ini";
  c.product = "Ñandú";
  c.permissions = {"a", "b"};
  c.lookup.host = "127.0.0.1:8080";
  c.database.connection = "Driver=x;Database=y";
  const std::string text = WriteHostConfiguration(c);
  const HostConfiguration again = Parse(text);
  EXPECT_EQ(WriteHostConfiguration(again), text);
  EXPECT_EQ(again.product, "Ñandú");
  EXPECT_EQ(again.permissions, c.permissions);
  EXPECT_EQ(again.database.connection, "Driver=x;Database=y");
  for (const char* key : {"ajustes", "separador", "usuario", "clave", "eventvalidation", "descarga", "espera"}) {
    EXPECT_THAT(text, HasSubstr("\n" + std::string(key) + " ="));
  }
  for (const char* impossible : {"a ;b", "a\nsede = 7", " a"}) {
    c.mail.password = impossible;
    EXPECT_THROW(WriteHostConfiguration(c), HostError) << impossible;
  }
}

}  // namespace
}  // namespace tolvan
