#include "transport/LoteTransporte.h"

#include <memory>

namespace tolvan {

LoteTransporte::LoteTransporte(DatabaseServices& database, const SqlDialect& dialect, std::int32_t companyId,
                               std::int32_t siteId)
    : database_(database), dialect_(dialect), companyId_(companyId), siteId_(siteId) {}

std::optional<std::int64_t> LoteTransporte::Find() {
  const std::unique_ptr<Recordset> rows = database_.OpenRecordset(FindStatement("idLoteTransporte"));
  if (rows->AtEnd()) return std::nullopt;
  return IntegerOf(rows->Value(std::size_t{0}));
}

OpenedLote LoteTransporte::Open() {
  // The other program may open between our look and our insert, and close again before our second look.
  constexpr int attempts = 5;
  for (int attempt = 0; attempt < attempts; ++attempt) {
    if (const std::optional<std::int64_t> number = Find()) return {*number, false};
    if (const std::optional<OpenedLote> lote = TryInsert()) return *lote;
  }
  throw HostError(HostErrorKind::Busy, "otro programa abre y cierra lotes de transporte al mismo tiempo");
}

std::optional<OpenedLote> LoteTransporte::TryInsert() {
  const std::unique_ptr<Transaction> transaction = database_.BeginTransaction();
  try {
    database_.Execute(OpenStatement());
  } catch (const HostError& error) {
    if (error.Kind() == HostErrorKind::Constraint) return std::nullopt;
    throw;
  }
  // Looked up in the same transaction, so that nobody can have closed it.
  const std::optional<std::int64_t> number = Find();
  if (!number) throw HostError(HostErrorKind::Damaged, "el lote de transporte abierto no aparece en la base de datos");
  transaction->Commit();
  return OpenedLote{*number, true};
}

ClosedLotes LoteTransporte::Close() {
  const std::unique_ptr<Transaction> transaction = database_.BeginTransaction();
  ClosedLotes closed{.newest = Find()};
  closed.count = database_.Execute(CloseStatement());
  transaction->Commit();
  return closed;
}

SqlStatement LoteTransporte::FindStatement(std::string_view columns) const {
  SqlStatement statement("SELECT ");
  statement.Sql(columns).Sql(" FROM LoteTransporteSubida WHERE idCompania = ").Integer(companyId_);
  return statement.Sql(" AND idSedeCompania = ").Integer(siteId_).Sql(" AND Cerrado=0 ORDER BY idLoteTransporte DESC");
}

SqlStatement LoteTransporte::OpenStatement() const {
  SqlStatement statement("INSERT INTO LoteTransporteSubida ( idCompania, idSedeCompania) VALUES (");
  return statement.Integer(companyId_).Sql(",").Integer(siteId_).Sql(")");
}

SqlStatement LoteTransporte::CloseStatement() const {
  SqlStatement statement("UPDATE LoteTransporteSubida SET Cerrado = 1, FechaCierre = ");
  statement.Sql(dialect_.CurrentMoment()).Sql(" WHERE idCompania = ").Integer(companyId_);
  return statement.Sql(" AND idSedeCompania = ").Integer(siteId_).Sql(" AND Cerrado=0");
}

}  // namespace tolvan
