// The collector's file of 300,000 articles, each with a barcode, from the database to the disk, against libxml2's
// xmlTextWriter writing the same document from memory. Both files are synced and renamed by the same file service.
#include <libxml/xmlwriter.h>

#include <cstdio>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "Bench.h"
#include "BenchFolder.h"
#include "NobodyThere.h"
#include "base/NumberText.h"
#include "database/sql/SqlScript.h"
#include "database/sqlite/SqliteDatabaseServices.h"
#include "system/posix/PosixFileHelper.h"
#include "transport/ItemDefinitionFile.h"
#include "transport/TransportDocument.h"
#include "xml/PugiXmlLibrary.h"

namespace tolvan::data {}

namespace tolvan::bench {
namespace {

constexpr int articles = 300'000;
constexpr long memoryAim = 300;  // MB

struct Article {
  std::string code, description, barcode;
  bool needsSerial;
};

std::vector<Article> MakeArticles() {
  std::vector<Article> all;
  for (int number = 0; number < articles; ++number) {
    const std::string digits = PaddedNumber(number, 7);
    all.push_back({"ART" + digits, "Artículo número " + digits + " de señal & sonido, 220 V", "759" + digits + "001",
                   number % 9 == 0});
  }
  return all;
}

SqlStatement Insert(std::string_view head, std::initializer_list<std::string_view> texts) {
  SqlStatement statement(head);
  const char* separator = "";
  for (const std::string_view text : texts) {
    statement.Sql(separator).Text(text);
    separator = ", ";
  }
  return statement.Sql(")");
}

void Fill(DatabaseServices& database, const std::vector<Article>& all) {
  RunSqlScript(database, data::sqliteSchema);
  const auto transaction = database.BeginTransaction();
  database.Execute(Insert("INSERT INTO Marcas (idMarca) VALUES (", {"DEF"}));
  database.Execute(Insert("INSERT INTO Departamentos (idDepartamento, RequerirReglasSeriales) VALUES (", {"TEL", "X"}));
  database.Execute(Insert("INSERT INTO Depositos (idDeposito) VALUES (", {"01"}));
  for (const Article& article : all) {
    database.Execute(
        Insert(article.needsSerial
                   ? "INSERT INTO Items (RequiereSeriales, idItem, Descripcion, idMarca, idDepartamento) VALUES (1, "
                   : "INSERT INTO Items (RequiereSeriales, idItem, Descripcion, idMarca, idDepartamento) VALUES (0, ",
               {article.code, article.description, "DEF", "TEL"}));
    database.Execute(
        Insert("INSERT INTO ItemsUnidades (EsPrincipal, idItem, idUnidad) VALUES (1, ", {article.code, "UND"}));
    database.Execute(
        Insert("INSERT INTO Barcodes (Barcode, idItem, idUnidad) VALUES (", {article.barcode, article.code, "UND"}));
  }
  transaction->Commit();
}

class Writer {
 public:
  explicit Writer(WholeFile& file)
      : writer_(xmlNewTextWriter(xmlOutputBufferCreateIO(&Writer::Put, nullptr, &file, nullptr)), &xmlFreeTextWriter) {
    xmlTextWriterStartDocument(writer_.get(), nullptr, nullptr, nullptr);
  }
  void Start(const char* name) { xmlTextWriterStartElement(writer_.get(), Bytes(name)); }
  void End() { xmlTextWriterEndElement(writer_.get()); }
  void Leaf(const char* name, const std::string& text) {
    xmlTextWriterWriteElement(writer_.get(), Bytes(name), Bytes(text.c_str()));
  }
  void Finish() { xmlTextWriterEndDocument(writer_.get()); }

 private:
  static const xmlChar* Bytes(const char* text) { return reinterpret_cast<const xmlChar*>(text); }
  static int Put(void* file, const char* bytes, int count) {
    static_cast<WholeFile*>(file)->Write({bytes, static_cast<std::size_t>(count)});
    return count;
  }

  std::unique_ptr<xmlTextWriter, void (*)(xmlTextWriterPtr)> writer_;
};

void WriteReference(const std::vector<Article>& all, const std::string& instance, WholeFile& file) {
  Writer out(file);
  for (const char* name : {"TransporteTolvanSystems", "Meta"}) out.Start(name);
  out.Leaf("Instancia", instance);
  out.Leaf("Clase", "DC_DefinicionItems");
  out.End();
  out.Start("Contenido");
  out.Leaf("MultiplesAreas", "1");
  out.Start("Articulos");
  for (const Article& article : all) {
    out.Start("Articulo");
    out.Leaf("Codigo", article.code);
    out.Leaf("Unidad", "UND");
    out.Leaf("Descripcion", article.description);
    out.Leaf("RequiereSeriales", article.needsSerial ? "True" : "False");
    out.Leaf("RequiereSerialesRegla", "X");
    out.End();
  }
  out.End();
  out.Start("Barcodes");
  for (const Article& article : all) {
    out.Start("Barcode");
    out.Leaf("Barcode", article.barcode);
    out.Leaf("Codigo", article.code);
    out.Leaf("Unidad", "UND");
    out.End();
  }
  out.End();
  for (const char* name : {"Depositos", "Deposito"}) out.Start(name);
  out.Leaf("Codigo", "01");
  out.Finish();
}

/// The most memory that this process has had, in MB.
long PeakMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmHWM:")) return std::stol(line.substr(6)) / 1024;
  }
  return 0;
}

std::string Bytes(const std::string& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

/// Lines as the reference puts one behind the declaration and the document.
std::string WithoutLineEnds(std::string text) {
  std::erase(text, '\n');
  return text;
}

int Main() {
  const BenchFolder folder;
  const std::string databasePath = folder.File("tienda.db");
  {
    SqliteDatabaseServices database({.path = databasePath, .createIfMissing = true});
    Fill(database, MakeArticles());
  }
  PosixFileHelper files(folder.File(""));
  NoDialogs dialogs;
  NoInterruption interruption;
  PugiXmlLibrary library;
  basComponenteXML xml(library, dialogs, "Tolvan", "");
  ActionReport report;
  const Work job{[&] {
    SqliteDatabaseServices database({.path = databasePath});
    ItemDefinitionFile file({database, files, dialogs, interruption, xml, "Tolvan"});
    report = file.Write(folder.File("a.tolpak"), CollectorPurpose::Count);
  }};
  job.run();
  const long peak = PeakMemory();  // before the reference's articles come into memory
  const std::vector<Article> all = MakeArticles();
  const Work reference{[&] {
    const auto file = files.CreateWhole(folder.File("b.tolpak"));
    WriteReference(all, report.DetailsAs<ItemDefinitionResult>().instance, *file);
    file->Commit();
  }};
  const bool reached = Compare("collector file of 300,000 articles", job, reference, 1.5);
  std::printf("  most memory: %ld MB (aim %ld)\n", peak, memoryAim);
  reference.run();
  if (WithoutLineEnds(Bytes(folder.File("a.tolpak"))) != WithoutLineEnds(Bytes(folder.File("b.tolpak")))) {
    std::fprintf(stderr, "the documents differ: %s\n", report.text.c_str());
    return 2;
  }
  return reached && peak < memoryAim ? 0 : 1;
}

}  // namespace
}  // namespace tolvan::bench

int main() {
  return tolvan::bench::Main();
}
