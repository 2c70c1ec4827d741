#include "transport/ItemDefinitionFile.h"

#include <array>
#include <exception>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <utility>

#include "base/Text.h"
#include "services/ComponentContext.h"
#include "services/clsCallBackProgreso.h"
#include "transport/TransportDocument.h"

namespace tolvan {
namespace {

constexpr std::int32_t rowsBetweenReports = 1000;
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

SqlStatement ItemCondition() {
  SqlStatement condition;
  condition.Sql(" I.Oculto = ").Boolean(false).Sql(" AND I.Activo = ").Boolean(true).Sql(" AND I.TipoItem = 0 ");
  return condition;
}

/// A query that could not be opened, which is reported otherwise than a failure while its rows are read.
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

/// Counts the rows of a whole file, for progress and interruption.
class RowCounter {
 public:
  explicit RowCounter(const ItemDefinitionServices& services) : services_(services) {}

  void CountRow() {
    if (services_.interruption.Requested()) throw HostError(HostErrorKind::Interrupted, {});
    if (++rowsRead_ % rowsBetweenReports != 0 || services_.progress == nullptr) return;
    services_.progress->NotificarProgreso(true, endUnknown, rowsRead_,
                                          "Registros leídos: " + std::to_string(rowsRead_));
  }

 private:
  /// A maximum from which the bar stays where it is, whatever is read.
  static constexpr std::int32_t endUnknown = std::numeric_limits<std::int32_t>::max();

  const ItemDefinitionServices& services_;
  std::int32_t rowsRead_ = 0;
};

/// The rows of a query, which is opened when the first is asked for.
class SectionRecords final : public XmlRecords {
 public:
  /// `count` becomes the number of rows.
  SectionRecords(const Section& section, SqlStatement query, DatabaseServices& database, RowCounter& counter,
                 std::size_t& count)
      : section_(section), query_(std::move(query)), database_(database), counter_(counter), count_(count) {}

  bool Next() override {
    if (rows_) {
      rows_->MoveNext();
    } else {
      rows_ = Open(database_, query_);
    }
    if (rows_->AtEnd()) return false;
    counter_.CountRow();
    ++count_;
    return true;
  }

  std::string_view Field(std::size_t index) const override { return LeafText(*rows_, section_.leaves[index]); }

 private:
  const Section& section_;
  SqlStatement query_;
  DatabaseServices& database_;
  RowCounter& counter_;
  std::size_t& count_;
  std::unique_ptr<Recordset> rows_;
};

/// What the lists are made from and counted in while the document is saved.
struct RowSource {
  DatabaseServices& database;
  RowCounter& counter;
  ItemDefinitionResult& result;
};

XmlRecordLayout LayoutOf(const Section& section) {
  XmlRecordLayout layout{section.element, section.rowElement, {}};
  for (const Leaf& leaf : section.leaves) layout.fields.push_back(leaf.element);
  return layout;
}

void AppendContent(clsDatosTransporteXMLSalida& document, CollectorPurpose purpose, const RowSource& source) {
  XmlDocument& xml = *document.XD();
  const XmlNode content = document.NodoContenido().value();
  const auto append = [&](const Section& section, SqlStatement query, std::size_t& count) {
    xml.AppendRecords(
        content, LayoutOf(section),
        std::make_unique<SectionRecords>(section, std::move(query), source.database, source.counter, count));
  };
  XMLUtil::AddElement(xml, content, "MultiplesAreas", std::string_view(purpose == CollectorPurpose::Count ? "1" : "0"));
  append(itemSection, CollectorItemsQuery(), source.result.items);
  append(barcodeSection, CollectorBarcodesQuery(), source.result.barcodes);
  append(depositSection, CollectorDepositsQuery(purpose == CollectorPurpose::Receiving), source.result.deposits);
}

/// Beside what the user was told: the reason, as far as it is known.
std::string MissingLibraryText(const XmlLibrary& library) {
  return library.Failure() ? TextForPeople(*library.Failure()) : std::string(basComponenteXML::missingText);
}

}  // namespace

ItemDefinitionServices CollectorServices(const ComponentContext& context, basComponenteXML& xml) {
  return {.database = context.application.Database(),
          .files = context.Files(),
          .dialogs = context.UserDialogs(),
          .interruption = context.services.UserInterruption(),
          .xml = xml,
          .productName = context.application.ProductName()};
}

ItemDefinitionFile::ItemDefinitionFile(ItemDefinitionServices services) : services_(std::move(services)) {}

ActionReport ItemDefinitionFile::Write(std::string_view path, CollectorPurpose purpose) {
  ItemDefinitionResult result;
  std::string error;
  result.outcome = TryToWrite(path, purpose, result, error);
  if (services_.progress != nullptr) services_.progress->ApagarProgreso();
  ActionReport report{.done = result.outcome == ItemDefinitionOutcome::Written,
                      .told = result.outcome != ItemDefinitionOutcome::Failed};
  if (report.done) {
    services_.dialogs.ShowMessage(MessageIcon::Information, services_.productName, successText);
  } else {
    report.text.append(lineBreak).append(error);
  }
  report.details = std::move(result);
  return report;
}

ItemDefinitionOutcome ItemDefinitionFile::TryToWrite(std::string_view path, CollectorPurpose purpose,
                                                     ItemDefinitionResult& result, std::string& error) {
  try {
    clsDatosTransporteXMLSalida document(services_.xml);
    result.instance = document.Instancia();
    if (!document.NuevoDocumento(documentClass)) {
      error = MissingLibraryText(services_.xml.Library());
      return ItemDefinitionOutcome::NoXmlLibrary;
    }
    RowCounter counter(services_);
    AppendContent(document, purpose, {services_.database, counter, result});
    Save(document, path);
    return ItemDefinitionOutcome::Written;
  } catch (const QueryNotOpened& stop) {
    error = TextForPeople(stop.reason);
    return ItemDefinitionOutcome::QueryNotOpened;
  } catch (const HostError& failure) {
    const bool stopped = failure.Kind() == HostErrorKind::Interrupted;
    error = TextForPeople(failure) + (stopped ? ". No se escribió el archivo." : "");
  } catch (const std::exception& failure) {  // such as no memory left
    error = std::string("Error: ") + failure.what();
  }
  return ItemDefinitionOutcome::Failed;
}

void ItemDefinitionFile::Save(clsDatosTransporteXMLSalida& document, std::string_view path) {
  const std::unique_ptr<WholeFile> file = services_.files.CreateWhole(path);
  document.XD()->Save(*file);
  file->Commit();
}

SqlStatement CollectorItemsQuery() {
  SqlStatement query(
      "SELECT IU.idItem, IU.idUnidad, I.Descripcion, I.RequiereSeriales, D.RequerirReglasSeriales FROM ItemsUnidades "
      "IU INNER JOIN Items I ON (IU.idItem = I.idItem AND IU.EsPrincipal = ");
  query.Boolean(true).Sql(" AND ").Append(ItemCondition());
  return query.Sql(") INNER JOIN Departamentos D ON I.idDepartamento = D.idDepartamento");
}

SqlStatement CollectorBarcodesQuery() {
  SqlStatement query(
      "SELECT I.idItem, B.Barcode, B.idUnidad FROM Barcodes B INNER JOIN Items I ON (B.idItem = I.idItem AND ");
  return query.Append(ItemCondition()).Sql(")");
}

SqlStatement CollectorDepositsQuery(bool receiving) {
  SqlStatement query("SELECT idDeposito FROM Depositos WHERE Tipo=0 ");
  if (receiving) query.Sql(" AND DisponibleEntrada=").Boolean(true);
  return query;
}

}  // namespace tolvan
