// Reading and cleaning a price list of 50,000 rows and 13 columns. The .xlsx against inflating its two big parts and
// running an XML parser without handlers over them; the .xls against freexl's read of the same cells. The memory is the
// largest resident size of a process that does nothing but read.
#include <freexl.h>
#include <libxml/parser.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zip.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "Bench.h"
#include "BenchFolder.h"
#include "NobodyThere.h"
#include "import/TemplateRow.h"
#include "spreadsheet/WorkbookFile.h"

namespace tolvan::bench {
namespace {

constexpr std::size_t rowsInWorkbook = 50'000;
constexpr std::size_t columns = 13;

void Read(decltype(&ReadXlsx) makeReader, const std::string& path, bool clean) {
  const NoInterruption never;
  const auto reader = makeReader(std::make_unique<WorkbookFile>(path), never);
  std::size_t rows = 0;
  std::size_t cells = 0;
  std::size_t kept = 0;
  for (SheetRow row; reader->NextRow(row);) {
    if (row.number < templateLayout.firstRow) continue;
    ++rows;
    cells += row.cells.size();
    if (clean && ReadTemplateRow(row).reason.empty()) ++kept;
  }
  if (rows != rowsInWorkbook || cells != rows * columns || (clean && kept != rows))
    throw std::runtime_error("not every cell was read");
}

void ParseBare(zip_t* archive, const char* name) {
  zip_file_t* part = zip_fopen(archive, name, 0);
  xmlSAXHandler none{};
  none.initialized = XML_SAX2_MAGIC;
  xmlParserCtxtPtr parser = xmlCreatePushParserCtxt(&none, nullptr, nullptr, 0, nullptr);
  std::vector<char> buffer(std::size_t{64} << 10);
  for (zip_int64_t count; (count = zip_fread(part, buffer.data(), buffer.size())) > 0;)
    xmlParseChunk(parser, buffer.data(), static_cast<int>(count), 0);
  if (xmlParseChunk(parser, nullptr, 0, 1) != 0) throw std::runtime_error("the reference failed");
  xmlFreeParserCtxt(parser);
  zip_fclose(part);
}

void InflateAndParse(const std::string& path) {
  zip_t* archive = zip_open(path.c_str(), ZIP_RDONLY, nullptr);
  ParseBare(archive, "xl/sharedStrings.xml");
  ParseBare(archive, "xl/worksheets/sheet1.xml");
  zip_discard(archive);
}

void ReadByFreexl(const std::string& path) {
  const void* handle = nullptr;
  if (freexl_open(path.c_str(), &handle) != FREEXL_OK || freexl_select_active_worksheet(handle, 0) != FREEXL_OK)
    throw std::runtime_error("the reference failed");
  unsigned rows = 0;
  unsigned short width = 0;
  freexl_worksheet_dimensions(handle, &rows, &width);
  std::size_t cells = 0;
  for (unsigned row = 4; row < rows; ++row)
    for (unsigned short column = 0; column < width; ++column) {
      FreeXL_CellValue value;
      if (freexl_get_cell_value(handle, row, column, &value) == FREEXL_OK && value.type != FREEXL_CELL_NULL) ++cells;
    }
  freexl_close(handle);
  if (cells != rowsInWorkbook * columns) throw std::runtime_error("the reference missed cells");
}

/// Runs the work in a process of its own; whether it stayed below the aim.
template <class Run>
bool CompareMemory(const char* name, double aimMegabytes, Run run) {
  const pid_t child = fork();
  if (child == 0) {
    run();
    _exit(0);
  }
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  const double megabytes = static_cast<double>(usage.ru_maxrss) / 1024;
  std::printf("%s: %.1f MB (aim %.4g)\n", name, megabytes, aimMegabytes);
  return status == 0 && megabytes <= aimMegabytes;
}

int Main() {
  const BenchFolder folder;
  const std::string path = folder.File("libro");
  const std::string maker = "/usr/bin/python3 " TOLVAN_WORKBOOK_MAKER " " + path.substr(0, path.rfind('/'));
  if (std::system(maker.c_str()) != 0) return 2;
  const std::string xlsx = path + ".xlsx";
  const std::string xls = path + ".xls";
  bool reached = CompareMemory(".xlsx, memory", 48, [&] { Read(ReadXlsx, xlsx, true); });
  reached = CompareMemory(".xls, memory", 80, [&] { Read(ReadXls, xls, true); }) && reached;
  const Work bare{[&] { InflateAndParse(xlsx); }};
  const Work freexl{[&] { ReadByFreexl(xls); }};
  Compare(".xlsx, 50,000 rows, read only", {[&] { Read(ReadXlsx, xlsx, false); }}, bare, 1.4);
  reached =
      Compare(".xlsx, 50,000 rows, read and cleaned", {[&] { Read(ReadXlsx, xlsx, true); }}, bare, 1.4) && reached;
  Compare(".xls, 50,000 rows, read only", {[&] { Read(ReadXls, xls, false); }}, freexl, 1.0);
  reached = Compare(".xls, 50,000 rows, read and cleaned", {[&] { Read(ReadXls, xls, true); }}, freexl, 1.0) && reached;
  return reached ? 0 : 1;
}

}  // namespace
}  // namespace tolvan::bench

int main() {
  return tolvan::bench::Main();
}
