#include "support/ImportRig.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace tolvan::test {
namespace {

constexpr std::string_view content = R"sql(
INSERT INTO Impuestos (ClaseI, Descripcion, Tasa, EsGeneral) VALUES (1, 'ITBIS', 0.18, 1), (2, 'REDUCIDO', 0.08, 0);
INSERT INTO Monedas (idMoneda, FactorConversion, MonedaExtranjera) VALUES ('DOP', 1, 0), ('USD', 50, 1);
INSERT INTO Marcas (idMarca) VALUES ('DEF'), ('ACME');
INSERT INTO Departamentos (idDepartamento, RequerirSeriales) VALUES ('DEF', 0), ('CDMA', 1), ('GSM', 0), ('SERIAL', 1);
INSERT INTO Items (idItem, Descripcion, idMarca, idDepartamento, ClaseI, Exento) VALUES
  ('VIEJO', 'ARTICULO VIEJO', 'ACME', 'DEF', 1, 0), ('EXENTO', 'ARTICULO EXENTO', 'ACME', 'DEF', 2, 1),
  ('SINPRINCIPAL', 'SIN UNIDAD', 'ACME', 'DEF', 1, 0);
INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal, Multiplicador) VALUES ('VIEJO', 'UND', 1, 1),
  ('VIEJO', 'CAJA', 0, 12), ('EXENTO', 'DEF', 1, 1);
INSERT INTO ItemsUnidadesInv (idItem, idUnidad, Inv, CostoActual, CostoActual_Ext) VALUES ('VIEJO', 'UND', 0, 10, 0.2),
  ('VIEJO', 'UND', 1, 10, 0.2), ('EXENTO', 'DEF', 0, 7.5, 0.15);
INSERT INTO Precios (idItem, idUnidad, idLista, Inv, Precio) VALUES ('VIEJO', 'UND', 'DEF', 0, 100),
  ('EXENTO', 'DEF', 'DEF', 0, 20);
)sql";

class MemoryReader : public WorksheetReader {
 public:
  explicit MemoryReader(const FakeSpreadsheets& sheets) : sheets_(sheets) {}
  bool NextRow(SheetRow& row) override {
    cells_.clear();
    while (cells_.empty()) {
      if (next_ == sheets_.rows.size()) {
        if (sheets_.readFailure) throw *sheets_.readFailure;
        return false;
      }
      std::uint32_t column = 0;
      for (const Given& given : sheets_.rows[next_++]) {
        ++column;
        if (given.kind != CellKind::Empty) cells_.push_back({column, given.kind, given.number, given.text});
      }
    }
    row.number = sheets_.firstRow + static_cast<std::uint32_t>(next_) - 1;
    row.cells = cells_;
    return true;
  }

 private:
  const FakeSpreadsheets& sheets_;
  std::vector<SheetCell> cells_;
  std::size_t next_ = 0;
};

class MemoryWorkbook : public NewWorkbook {
 public:
  explicit MemoryWorkbook(FakeSpreadsheets& sheets) : sheets_(sheets) {}
  void AppendRow(std::span<const NewCell> cells, NewRowStyle) override {
    GivenRow& row = sheets_.rows.emplace_back();
    for (const NewCell& cell : cells) {
      if (const auto* text = std::get_if<std::string_view>(&cell)) {
        row.emplace_back(std::string(*text));
      } else if (const auto* number = std::get_if<double>(&cell)) {
        // As a workbook keeps it: sixteen digits in text.
        std::array<char, 40> buffer{};
        std::snprintf(buffer.data(), buffer.size(), "%.16G", *number);
        row.emplace_back(std::strtod(buffer.data(), nullptr));
      } else {
        row.push_back(none);
      }
    }
  }
  void SaveAs(std::string_view) override {}
  std::string OpenForUser() override { return {}; }

 private:
  FakeSpreadsheets& sheets_;
};

}  // namespace

std::unique_ptr<WorksheetReader> FakeSpreadsheets::OpenFirstWorksheet(std::string_view, const Interruption&) {
  return std::make_unique<MemoryReader>(*this);
}

std::unique_ptr<NewWorkbook> FakeSpreadsheets::CreateFromTemplate(std::string_view, std::uint32_t headingRows) {
  firstRow = headingRows + 1;
  rows.clear();
  return std::make_unique<MemoryWorkbook>(*this);
}

ImportTest::ImportTest() {
  Execute(std::string(content));
  host.application.database = &Database();
  host.application.permissions = {"importar-precios"};
}

std::string ImportTest::Dump() {
  std::string dump;
  for (const char* table : {"Marcas", "Departamentos", "Items", "ItemsUnidades", "ItemsUnidadesInv", "Precios"}) {
    dump.append(table).append(": ").append(Query("SELECT * FROM " + std::string(table))).append("\n");
  }
  return dump;
}

}  // namespace tolvan::test
