#include "import/ItemStatements.h"

#include <stdexcept>

#include "base/Text.h"

namespace tolvan {
namespace {

constexpr std::string_view selectItems =
    "SELECT I.ClaseI, I.Exento, P.Precio, I.idItem, I.Descripcion, I.idMarca, I.idDepartamento, IU.CostoActual FROM "
    "Items I INNER JOIN VistaItemsUnidades IU ON ";
constexpr std::string_view inPrincipalUnit = "I.idItem = IU.idItem AND IU.EsPrincipal = 1 AND IU.Inv = ";
constexpr std::string_view withPrice =
    " LEFT JOIN Precios P ON P.idItem = IU.idItem AND P.idUnidad = IU.idUnidad AND P.idLista = ";

constexpr std::size_t shownCharacters = 40;

// The places in that query.
enum Field : std::size_t { TaxClass, Exempt, Net, Code, Description, Brand, Department, Cost };

std::optional<Currency> AmountOf(const FieldValue& value, std::string_view what, Remarks& unusable) {
  const std::optional<Currency> amount = CurrencyOf(value);
  if (!amount && !IsNull(value)) {
    const std::string text = TextOf(value);
    unusable.push_back(std::string(what) + " registrado del Item no es un importe (" +
                       std::string(FirstCharacters(text, shownCharacters)) + ")");
  }
  return amount;
}

/// " WHERE idItem = … AND idUnidad = …".
void AppendUnitKey(SqlStatement& statement, const ItemLayer& layer) {
  statement.Sql(" WHERE idItem = ").Text(layer.item).Sql(" AND idUnidad = ").Text(layer.unit);
}

SqlStatement InsertDescribedByCode(std::string_view insertInto, std::string_view code) {
  SqlStatement statement(insertInto);
  return statement.Text(code).Sql(", ").Text(code).Sql(")");
}

}  // namespace

SqlStatement AllItemsStatement(std::int32_t inventory, std::string_view list) {
  SqlStatement statement(selectItems);
  statement.Sql(inPrincipalUnit).Integer(inventory).Sql(withPrice).Text(list);
  return statement.Sql(" AND P.Inv = IU.Inv ORDER BY I.idDepartamento, I.idMarca, I.idItem");
}

SqlStatement ItemStatement(std::string_view code, std::int32_t inventory) {
  SqlStatement statement(selectItems);
  statement.Sql("I.idItem = ")
      .Text(code)
      .Sql(" AND ")
      .Sql(inPrincipalUnit)
      .Integer(inventory)
      .Sql(withPrice)
      .Text(defaultCode);
  // The two blanks are deliberate.
  return statement.Sql(" AND P.Inv = IU.Inv  ORDER BY I.idDepartamento, I.idMarca, I.idItem");
}

SqlStatement CodeExistsStatement(std::string_view code) {
  return SqlStatement("SELECT idItem FROM Items WHERE idItem = ").Text(code);
}

SqlStatement PrincipalUnitStatement(std::string_view code) {
  SqlStatement statement("SELECT idUnidad FROM ItemsUnidades WHERE idItem = ");
  return statement.Text(code).Sql(" AND EsPrincipal = ").Boolean(true);
}

ItemRecord ItemRecord::Read(const Recordset& rows, const TaxTable& taxes) {
  ItemRecord item;
  item.code = rows.Text(Code);
  item.description = rows.Text(Description);
  item.brand = rows.Text(Brand);
  item.department = rows.Text(Department);
  item.cost = AmountOf(rows.Value(Cost), "el costo", item.unusable);
  item.costIsNull = IsNull(rows.Value(Cost));
  item.net = AmountOf(rows.Value(Net), "el precio", item.unusable);
  const bool exempt = BooleanOf(rows.Value(Exempt)).value_or(false);
  item.rate = taxes.RateOf(IntegerOf(rows.Value(TaxClass)).value_or(0), exempt);
  try {
    if (item.net) item.withTax = item.rate.WithTax(*item.net);
  } catch (const std::overflow_error&) {
    item.unusable.emplace_back("el precio del Item con impuestos es demasiado grande para un importe");
  }
  return item;
}

SqlStatement OtherUnitsStatement(std::string_view code, std::string_view principalUnit) {
  SqlStatement statement("SELECT idItem, idUnidad, Multiplicador FROM ItemsUnidades WHERE idItem = ");
  return statement.Text(code).Sql(" AND idUnidad <> ").Text(principalUnit);
}

SqlStatement SerialsStatement(std::string_view code) {
  SqlStatement statement("SELECT 1 FROM Items WHERE idItem = ");
  return statement.Text(code).Sql(" AND RequiereSeriales = ").Boolean(true);
}

SqlStatement BrandStatement(std::string_view brand) {
  return SqlStatement("SELECT idMarca FROM Marcas WHERE idMarca = ").Text(brand);
}

SqlStatement UnitsOfItemStatement(std::string_view item) {
  return SqlStatement("SELECT idUnidad, EsPrincipal FROM ItemsUnidades WHERE idItem = ").Text(item);
}

SqlStatement InsertBrand(std::string_view brand) {
  return InsertDescribedByCode("INSERT INTO Marcas (idMarca, Descripcion) VALUES (", brand);
}

SqlStatement InsertDepartment(std::string_view department) {
  SqlStatement statement("INSERT INTO Departamentos (idDepartamento, Descripcion, RequerirSeriales) VALUES (");
  return statement.Text(department).Sql(", ").Text(department).Sql(", ").Boolean(false).Sql(")");
}

SqlStatement InsertItem(const ItemCreation& item) {
  SqlStatement statement(
      "INSERT INTO Items (idItem, Descripcion, idMarca, idDepartamento, ClaseI, Exento, Oculto, Activo, TipoItem, "
      "RequiereSeriales, MD5OrigenImportar) VALUES (");
  statement.Text(item.code).Sql(", ").Text(item.description).Sql(", ").Text(item.brand).Sql(", ");
  statement.Text(item.department).Sql(", ").Integer(item.taxClass).Sql(", ");
  statement.Boolean(false).Sql(", ").Boolean(false).Sql(", ").Boolean(true).Sql(", 0, ");
  statement.Boolean(item.requiresSerials).Sql(", ");
  if (item.fingerprint) {
    statement.Text(*item.fingerprint);
  } else {
    statement.Null();
  }
  return statement.Sql(")");
}

SqlStatement InsertUnit(const NewUnit& unit) {
  SqlStatement statement(
      "INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal, Multiplicador, SolicitarDescomponer) VALUES (");
  statement.Text(unit.item).Sql(", ").Text(unit.unit).Sql(", ").Boolean(unit.principal).Sql(", ");
  return statement.Integer(unit.multiplier).Sql(", ").Boolean(unit.asksToDecompose).Sql(")");
}

SqlStatement InsertCost(const ItemLayer& layer, const ItemCost& cost) {
  SqlStatement statement(
      "INSERT INTO ItemsUnidadesInv (idItem, idUnidad, Inv, CostoActual, CostoAnterior, CostoActual_Ext, "
      "CostoAnterior_Ext) VALUES (");
  statement.Text(layer.item).Sql(", ").Text(layer.unit).Sql(", ").Integer(layer.inventory).Sql(", ");
  return statement.Money(cost.cost).Sql(", 0, ").Money(cost.foreign).Sql(", 0)");
}

SqlStatement UpdateCost(const ItemLayer& layer, const ItemCost& cost) {
  // Each former value stands before its present one: an engine that assigns from left to right keeps it all the same.
  SqlStatement statement("UPDATE ItemsUnidadesInv SET CostoAnterior=CostoActual, CostoActual=");
  statement.Money(cost.cost).Sql(", CostoAnterior_Ext=CostoActual_Ext, CostoActual_Ext=").Money(cost.foreign);
  AppendUnitKey(statement, layer);
  return statement.Sql(" AND Inv = ").Integer(layer.inventory);
}

SqlStatement InsertPrice(const ItemLayer& layer, Currency net, bool fixed) {
  SqlStatement statement("INSERT INTO Precios (idItem, idUnidad, idLista, Inv, Precio, Fijo) VALUES (");
  statement.Text(layer.item).Sql(", ").Text(layer.unit).Sql(", ").Text(defaultCode).Sql(", ");
  return statement.Integer(layer.inventory).Sql(", ").Money(net).Sql(", ").Boolean(fixed).Sql(")");
}

SqlStatement UpdatePrice(const ItemLayer& layer, Currency net, bool fixed) {
  SqlStatement statement("UPDATE Precios SET PrecioAnterior=Precio, Precio=");
  statement.Money(net);
  if (fixed) statement.Sql(", Fijo=").Boolean(true);
  AppendUnitKey(statement, layer);
  return statement.Sql(" AND idLista = ").Text(defaultCode).Sql(" AND Inv = ").Integer(layer.inventory);
}

SqlStatement ClearFingerprint(std::string_view fingerprint) {
  return SqlStatement("UPDATE Items SET MD5OrigenImportar = NULL WHERE MD5OrigenImportar = ").Text(fingerprint);
}

SqlStatement SetFingerprint(std::string_view item, std::string_view fingerprint) {
  SqlStatement statement("UPDATE Items SET MD5OrigenImportar = ");
  return statement.Text(fingerprint).Sql(" WHERE idItem = ").Text(item);
}

std::vector<BatchResult> RunWhole(DatabaseServices& database, std::span<const SqlStatement> statements) {
  if (statements.empty()) return {};
  std::vector<BatchResult> results = database.RunBatch(statements);
  for (std::size_t index = 0; index < results.size(); ++index) {
    if (results[index].error) throw BatchFailure(*results[index].error, index);
  }
  return results;
}

}  // namespace tolvan
