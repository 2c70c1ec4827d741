#include "import/ItemStatements.h"

#include "import/CellCleaning.h"

namespace tolvan {
namespace {

/// " WHERE idItem = … AND idUnidad = …".
void AppendUnitKey(SqlStatement& statement, const ItemLayer& layer) {
  statement.Sql(" WHERE idItem = ").Text(layer.item).Sql(" AND idUnidad = ").Text(layer.unit);
}

SqlStatement InsertDescribedByCode(std::string_view insertInto, std::string_view code) {
  SqlStatement statement(insertInto);
  return statement.Text(code).Sql(", ").Text(code).Sql(")");
}

}  // namespace

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

}  // namespace tolvan
