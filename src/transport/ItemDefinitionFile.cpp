#include "transport/ItemDefinitionFile.h"

#include <array>
#include <exception>
#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "services/ComponentContext.h"
#include "transport/ItemDefinitionQueries.h"
#include "transport/XMLUtil.h"
#include "transport/basComponenteXML.h"
#include "transport/clsDatosTransporteXMLSalida.h"

namespace tolvan {
namespace {

constexpr std::size_t rowsBetweenReports = 1000;
constexpr std::string_view successText =
    "Archivo guardado con éxito\r\nFavor copie el archivo guardado en el dispositivo y ábralo desde el mismo";

enum class LeafKind {
  Text,
  Boolean,
  Rule,  ///< a text, or a boolean where the store only tells whether there is a rule
};

/// A child of a row's element and the column of the query that it takes its text from.
struct Leaf {
  std::string_view element;
  std::size_t column;
  LeafKind kind = LeafKind::Text;
};

struct Section {
  std::string_view element;
  std::string_view rowElement;
  std::span<const Leaf> leaves;
};

// The names and their order are the device's: a unit and an identifier travel under other names than their columns',
// and a barcode stands before the item it belongs to.
constexpr std::array itemLeaves = {Leaf{"Codigo", 0}, Leaf{"Unidad", 1}, Leaf{"Descripcion", 2},
                                   Leaf{"RequiereSeriales", 3, LeafKind::Boolean},
                                   Leaf{"RequiereSerialesRegla", 4, LeafKind::Rule}};
constexpr std::array barcodeLeaves = {Leaf{"Barcode", 1}, Leaf{"Codigo", 0}, Leaf{"Unidad", 2}};
constexpr std::array depositLeaves = {Leaf{"Codigo", 0}};

constexpr Section itemSection = {"Articulos", "Articulo", itemLeaves};
constexpr Section barcodeSection = {"Barcodes", "Barcode", barcodeLeaves};
constexpr Section depositSection = {"Depositos", "Deposito", depositLeaves};

/// A query that could not be opened, which is told otherwise than a failure while its rows are read.
struct QueryNotOpened {
  HostError reason;
};

std::unique_ptr<Recordset> Open(DatabaseServices& database, const SqlStatement& query) {
  try {
    return database.OpenRecordset(query);
  } catch (const HostError& error) {
    if (error.Kind() == HostErrorKind::Interrupted) throw;
    throw QueryNotOpened{error};
  }
}

// Some engines keep a boolean as a number. Looked at by its text first: the value would be a copy.
std::string_view LeafText(const Recordset& rows, const Leaf& leaf) {
  const std::string_view text = rows.Text(leaf.column);
  if (leaf.kind == LeafKind::Text || text.empty() || text == "True" || text == "False") return text;
  if (leaf.kind == LeafKind::Rule && text != "0" && text != "1" && text != "-1") return text;
  const FieldValue value = rows.Value(leaf.column);
  if (leaf.kind == LeafKind::Rule && std::holds_alternative<std::string>(value)) return rows.Text(leaf.column);
  const std::optional<bool> flag = BooleanOf(value);
  if (!flag) return rows.Text(leaf.column);
  return *flag ? "True" : "False";
}

/// Sees to interruption and progress over all rows of a file.
class RowWatch {
 public:
  explicit RowWatch(const ItemDefinitionServices& services) : services_(services) {}

  void CountRow() {
    if (services_.interruption.Requested()) throw HostError(HostErrorKind::Interrupted, {});
    if (++rowsRead_ % rowsBetweenReports == 0 && services_.progress) services_.progress(rowsRead_);
  }

 private:
  const ItemDefinitionServices& services_;
  std::size_t rowsRead_ = 0;
};

/// The rows of a query, which is opened when the first is asked for.
class SectionRecords final : public XmlRecords {
 public:
  /// `count` becomes the number of rows.
  SectionRecords(const Section& section, SqlStatement query, DatabaseServices& database, RowWatch& watch,
                 std::size_t& count)
      : section_(section), query_(std::move(query)), database_(database), watch_(watch), count_(count) {}

  bool Next() override {
    if (rows_) {
      rows_->MoveNext();
    } else {
      rows_ = Open(database_, query_);
    }
    if (rows_->AtEnd()) return false;
    watch_.CountRow();
    ++count_;
    return true;
  }

  std::string_view Field(std::size_t index) const override { return LeafText(*rows_, section_.leaves[index]); }

 private:
  const Section& section_;
  SqlStatement query_;
  DatabaseServices& database_;
  RowWatch& watch_;
  std::size_t& count_;
  std::unique_ptr<Recordset> rows_;
};

/// What the lists are made from and counted in while the document is saved.
struct RowSource {
  DatabaseServices& database;
  RowWatch& watch;
  ItemDefinitionResult& result;
};

XmlRecordLayout LayoutOf(const Section& section) {
  XmlRecordLayout layout{section.element, section.rowElement, {}};
  for (const Leaf& leaf : section.leaves) layout.fields.push_back(leaf.element);
  return layout;
}

void AppendContent(clsDatosTransporteXMLSalida& document, bool multipleAreas, bool receiving, const RowSource& source) {
  XmlDocument& xml = *document.XD();
  const XmlNode content = document.NodoContenido().value();
  const auto append = [&](const Section& section, SqlStatement query, std::size_t& count) {
    xml.AppendRecords(
        content, LayoutOf(section),
        std::make_unique<SectionRecords>(section, std::move(query), source.database, source.watch, count));
  };
  XMLUtil::AddElement(xml, content, "MultiplesAreas", std::string_view(multipleAreas ? "1" : "0"));
  append(itemSection, CollectorItemsQuery(), source.result.items);
  append(barcodeSection, CollectorBarcodesQuery(), source.result.barcodes);
  append(depositSection, CollectorDepositsQuery(receiving), source.result.deposits);
}

/// Beside what the user was told: the reason, as far as it is known.
std::string MissingLibraryText(const XmlLibrary& library) {
  return library.Failure() ? TextForPeople(*library.Failure()) : std::string(basComponenteXML::missingText);
}

ItemDefinitionResult NotWritten(ItemDefinitionResult result, ItemDefinitionOutcome outcome, std::string error) {
  result.outcome = outcome;
  result.error = std::move(error);
  return result;
}

}  // namespace

ItemDefinitionServices CollectorServices(const ComponentContext& context, basComponenteXML& xml) {
  return {.database = context.application.Database(),
          .files = context.Files(),
          .dialogs = context.UserDialogs(),
          .interruption = context.services.UserInterruption(),
          .xml = xml,
          .productName = context.application.ProductName(),
          .progress = {}};
}

ItemDefinitionFile::ItemDefinitionFile(ItemDefinitionServices services) : services_(std::move(services)) {}

ItemDefinitionResult ItemDefinitionFile::Write(std::string_view path, bool multipleAreas, bool receiving) {
  ItemDefinitionResult result = TryToWrite(path, multipleAreas, receiving);
  if (services_.progress) services_.progress(std::nullopt);
  if (result.outcome == ItemDefinitionOutcome::Written) {
    services_.dialogs.ShowMessage(MessageIcon::Information, services_.productName, successText);
  }
  return result;
}

ItemDefinitionResult ItemDefinitionFile::TryToWrite(std::string_view path, bool multipleAreas, bool receiving) {
  ItemDefinitionResult result;
  try {
    clsDatosTransporteXMLSalida document(services_.xml);
    result.instance = document.Instancia();
    if (!document.NuevoDocumento(documentClass)) {
      return NotWritten(result, ItemDefinitionOutcome::NoXmlLibrary, MissingLibraryText(services_.xml.Library()));
    }
    RowWatch watch(services_);
    AppendContent(document, multipleAreas, receiving, {services_.database, watch, result});
    Save(document, path);
  } catch (const QueryNotOpened& stop) {
    return NotWritten(result, ItemDefinitionOutcome::QueryNotOpened, TextForPeople(stop.reason));
  } catch (const HostError& error) {
    const bool stopped = error.Kind() == HostErrorKind::Interrupted;
    return NotWritten(result, ItemDefinitionOutcome::Failed,
                      TextForPeople(error) + (stopped ? ". No se escribió el archivo." : ""));
  } catch (const std::exception& error) {  // such as no memory left
    return NotWritten(result, ItemDefinitionOutcome::Failed, std::string("Error: ") + error.what());
  }
  result.outcome = ItemDefinitionOutcome::Written;
  return result;
}

void ItemDefinitionFile::Save(clsDatosTransporteXMLSalida& document, std::string_view path) {
  const std::unique_ptr<WholeFile> file = services_.files.CreateWhole(path);
  document.XD()->Save(*file);
  file->Commit();
}

}  // namespace tolvan
