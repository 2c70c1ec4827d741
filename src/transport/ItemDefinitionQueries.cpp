#include "transport/ItemDefinitionQueries.h"

namespace tolvan {
namespace {

SqlStatement ItemCondition() {
  SqlStatement condition;
  condition.Sql(" I.Oculto = ").Boolean(false).Sql(" AND I.Activo = ").Boolean(true).Sql(" AND I.TipoItem = 0 ");
  return condition;
}

}  // namespace

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
