#include "import/ItemQueries.h"

#include <stdexcept>

#include "base/Text.h"
#include "import/CellCleaning.h"

namespace tolvan {
namespace {

constexpr std::string_view fields =
    "SELECT I.ClaseI, I.Exento, P.Precio, I.idItem, I.Descripcion, I.idMarca, I.idDepartamento, IU.CostoActual FROM "
    "Items I INNER JOIN VistaItemsUnidades IU ON ";
constexpr std::string_view unit = "I.idItem = IU.idItem AND IU.EsPrincipal = 1 AND IU.Inv = ";
constexpr std::string_view price =
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

}  // namespace

SqlStatement AllItemsStatement(std::int32_t inventory, std::string_view list) {
  SqlStatement statement(fields);
  statement.Sql(unit).Integer(inventory).Sql(price).Text(list);
  return statement.Sql(" AND P.Inv = IU.Inv ORDER BY I.idDepartamento, I.idMarca, I.idItem");
}

SqlStatement ItemStatement(std::string_view code, std::int32_t inventory) {
  SqlStatement statement(fields);
  statement.Sql("I.idItem = ").Text(code).Sql(" AND ").Sql(unit).Integer(inventory).Sql(price).Text(defaultCode);
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

}  // namespace tolvan
