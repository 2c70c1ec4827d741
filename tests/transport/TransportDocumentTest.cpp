#include "transport/TransportDocument.h"

#include <gmock/gmock.h>

#include "support/FakeHost.h"
#include "xml/PugiXmlLibrary.h"

namespace tolvan::test {
namespace {

class EnvelopeTest : public ::testing::Test {
 protected:
  static std::string Saved(const clsDatosTransporteXMLSalida& envelope) {
    FakeFiles files;
    const auto file = files.CreateWhole("sobre.xml");
    envelope.XD()->Save(*file);
    file->Commit();
    return files.contents["sobre.xml"];
  }

  FakeDialogs dialogs_;
  PugiXmlLibrary library_;
  basComponenteXML component_{library_, dialogs_, "Tolvan", ""};
};

TEST_F(EnvelopeTest, BeginsAgainWithEveryNewDocumentAndKeepsItsInstance) {
  clsDatosTransporteXMLSalida envelope(component_);
  EXPECT_FALSE(envelope.NuevoDocumento(""));
  EXPECT_FALSE(envelope.DocumentoCargado());
  EXPECT_EQ(envelope.Clase(), "");
  EXPECT_EQ(envelope.XD(), nullptr);
  EXPECT_FALSE(envelope.NodoContenido());
  for (const std::string name : {"Una", "Dos"}) {
    ASSERT_TRUE(envelope.NuevoDocumento(name));
    EXPECT_FALSE(envelope.NuevoDocumento(""));
    EXPECT_TRUE(envelope.DocumentoCargado());
    EXPECT_EQ(envelope.Clase(), name);
    const XmlNode content = envelope.NodoContenido().value();
    XMLUtil::AddElement(*envelope.XD(), content, "Texto", std::string_view("a < b"));
    XMLUtil::AddElement(*envelope.XD(), content, "Nulo", FieldValue());
    XMLUtil::AddElement(*envelope.XD(), content, "Numero", FieldValue(2.5));
    EXPECT_EQ(Saved(envelope), "<?xml version=\"1.0\"?><TransporteTolvanSystems><Meta><Instancia>" +
                                   envelope.Instancia() + "</Instancia><Clase>" + name +
                                   "</Clase></Meta><Contenido><Texto>a &lt; b</Texto><Nulo></Nulo><Numero>2.5</Numero>"
                                   "</Contenido></TransporteTolvanSystems>");
  }
  EXPECT_NE(clsDatosTransporteXMLSalida(component_).Instancia(), envelope.Instancia());
  constexpr auto digits = "[{][0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}[}]";
  EXPECT_THAT(envelope.Instancia(), ::testing::MatchesRegex(digits));
}

}  // namespace
}  // namespace tolvan::test
