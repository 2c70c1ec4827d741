// The zip of a new workbook: its two parts that depend on the sheet, and those that are the same whatever it holds.
#include <zip.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/Calendar.h"
#include "host/FileHelper.h"
#include "spreadsheet/NewXlsxWorkbook.h"

namespace tolvan {
namespace {

constexpr std::string_view contentTypes = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">
<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>
<Default Extension="xml" ContentType="application/xml"/>
<Override PartName="/docProps/core.xml" ContentType="application/vnd.openxmlformats-package.core-properties+xml"/>
<Override PartName="/xl/workbook.xml"
 ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"/>
<Override PartName="/xl/styles.xml"
 ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml"/>
<Override PartName="/xl/sharedStrings.xml"
 ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml"/>
<Override PartName="/xl/worksheets/sheet1.xml"
 ContentType="application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"/>
</Types>)";

constexpr std::string_view packageRelationships = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">
<Relationship Id="rId1" Target="xl/workbook.xml"
 Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument"/>
<Relationship Id="rId2" Target="docProps/core.xml"
 Type="http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties"/>
</Relationships>)";

constexpr std::string_view workbook = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main"
 xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">
<bookViews><workbookView/></bookViews>
<sheets><sheet name="Precios" sheetId="1" r:id="rId1"/></sheets>
</workbook>)";

constexpr std::string_view workbookRelationships = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">
<Relationship Id="rId1" Target="worksheets/sheet1.xml"
 Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet"/>
<Relationship Id="rId2" Target="styles.xml"
 Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles"/>
<Relationship Id="rId3" Target="sharedStrings.xml"
 Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/sharedStrings"/>
</Relationships>)";

// The formats in cellXfs stand in the order of NewCellStyle. Number format 49 is "text", so that "00123" stays what it
// is when the user edits it. The first two fills are the format's own.
constexpr std::string_view styles = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<styleSheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">
<fonts count="4">
<font><sz val="11"/><name val="Calibri"/><family val="2"/></font>
<font><b/><sz val="14"/><name val="Calibri"/><family val="2"/></font>
<font><i/><sz val="11"/><name val="Calibri"/><family val="2"/></font>
<font><b/><sz val="11"/><color rgb="FFFFFFFF"/><name val="Calibri"/><family val="2"/></font>
</fonts>
<fills count="4">
<fill><patternFill patternType="none"/></fill>
<fill><patternFill patternType="gray125"/></fill>
<fill><patternFill patternType="solid"><fgColor rgb="FF1F4E78"/><bgColor indexed="64"/></patternFill></fill>
<fill><patternFill patternType="solid"><fgColor rgb="FFDDEBF7"/><bgColor indexed="64"/></patternFill></fill>
</fills>
<borders count="2">
<border><left/><right/><top/><bottom/><diagonal/></border>
<border><left style="thin"><color auto="1"/></left><right style="thin"><color auto="1"/></right>
<top style="thin"><color auto="1"/></top><bottom style="thin"><color auto="1"/></bottom><diagonal/></border>
</borders>
<cellStyleXfs count="1"><xf numFmtId="0" fontId="0" fillId="0" borderId="0"/></cellStyleXfs>
<cellXfs count="6">
<xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0"/>
<xf numFmtId="0" fontId="1" fillId="0" borderId="0" xfId="0" applyFont="1"/>
<xf numFmtId="0" fontId="2" fillId="0" borderId="0" xfId="0" applyFont="1"/>
<xf numFmtId="0" fontId="3" fillId="2" borderId="1" xfId="0" applyFont="1" applyFill="1" applyBorder="1"/>
<xf numFmtId="0" fontId="0" fillId="3" borderId="1" xfId="0" applyFill="1" applyBorder="1" applyAlignment="1">
<alignment vertical="top" wrapText="1"/></xf>
<xf numFmtId="49" fontId="0" fillId="0" borderId="0" xfId="0" applyNumberFormat="1"/>
</cellXfs>
<cellStyles count="1"><cellStyle name="Normal" xfId="0" builtinId="0"/></cellStyles>
</styleSheet>)";

/// The part that says when the workbook was made.
std::string PropertiesXml(Date created) {
  return R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<cp:coreProperties xmlns:cp="http://schemas.openxmlformats.org/package/2006/metadata/core-properties"
 xmlns:dcterms="http://purl.org/dc/terms/" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<dcterms:created xsi:type="dcterms:W3CDTF">)" +
         created.ToIsoText() + R"(T00:00:00Z</dcterms:created>
</cp:coreProperties>)";
}

/// One part. Its content is the pieces one after the other, which must outlive the packing.
struct NewZipEntry {
  std::string name;
  std::vector<std::string_view> pieces;
};

using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;
using Source = std::unique_ptr<zip_source_t, decltype(&zip_source_free)>;

/// Everything happens in memory, so there is hardly any other cause than that it ran out.
[[noreturn]] void Fail(int code) {
  throw HostError(HostErrorKind::Failed, "no se pudo empaquetar el libro; es posible que falte memoria", {}, code);
}

zip_uint16_t DosDate(Date day) {
  return static_cast<zip_uint16_t>(((day.Year() - 1980) << 9) | (day.Month() << 5) | day.Day());
}

Source SourceOf(const NewZipEntry& entry, zip_error_t& error) {
  std::vector<zip_buffer_fragment_t> fragments;
  fragments.reserve(entry.pieces.size());
  for (const std::string_view piece : entry.pieces) {
    // The library only reads from it. NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    auto* const bytes = reinterpret_cast<zip_uint8_t*>(const_cast<char*>(piece.data()));
    fragments.push_back({bytes, piece.size()});
  }
  return {zip_source_buffer_fragment_create(fragments.data(), fragments.size(), 0, &error), &zip_source_free};
}

void Add(zip_t* archive, const NewZipEntry& entry, Date day) {
  zip_error_t error{};
  Source source = SourceOf(entry, error);
  if (!source) Fail(zip_error_code_zip(&error));
  const zip_int64_t index = zip_file_add(archive, entry.name.c_str(), source.get(), ZIP_FL_ENC_UTF_8);
  if (index < 0) Fail(zip_error_code_zip(zip_get_error(archive)));
  static_cast<void>(source.release());  // the archive's own from here on
  if (zip_file_set_dostime(archive, static_cast<zip_uint64_t>(index), 0, DosDate(day), 0) != 0)
    Fail(zip_error_code_zip(zip_get_error(archive)));
}

void Pack(const std::vector<NewZipEntry>& entries, Date day, zip_source_t* packed) {
  zip_error_t error{};
  Archive archive(zip_open_from_source(packed, ZIP_TRUNCATE, &error), &zip_discard);
  if (!archive) Fail(zip_error_code_zip(&error));
  zip_source_keep(packed);  // closing the archive gives up one hold on it
  for (const NewZipEntry& entry : entries) Add(archive.get(), entry, day);
  if (zip_close(archive.get()) != 0) Fail(zip_error_code_zip(zip_get_error(archive.get())));
  static_cast<void>(archive.release());
}

void Copy(zip_source_t* packed, WholeFile& target) {
  if (zip_source_open(packed) != 0) Fail(zip_error_code_zip(zip_source_error(packed)));
  std::array<char, std::size_t{64} << 10> buffer{};
  for (;;) {
    const zip_int64_t count = zip_source_read(packed, buffer.data(), buffer.size());
    if (count < 0) Fail(zip_error_code_zip(zip_source_error(packed)));
    if (count == 0) break;
    target.Write({buffer.data(), static_cast<std::size_t>(count)});
  }
  zip_source_close(packed);
}

/// Packs the entries, all dated with `day`, and appends the zip to `target`.
void WriteZip(const std::vector<NewZipEntry>& entries, Date day, WholeFile& target) {
  zip_error_t error{};
  const Source packed(zip_source_buffer_create(nullptr, 0, 0, &error), &zip_source_free);
  if (!packed) Fail(zip_error_code_zip(&error));
  Pack(entries, day, packed.get());
  Copy(packed.get(), target);
}

}  // namespace

void WriteXlsxPackage(NewSheet& sheet, std::uint32_t frozenRows, Date created, WholeFile& target) {
  const std::string properties = PropertiesXml(created);
  const std::vector<NewZipEntry> parts = {{"[Content_Types].xml", {contentTypes}},
                                          {"_rels/.rels", {packageRelationships}},
                                          {"docProps/core.xml", {properties}},
                                          {"xl/workbook.xml", {workbook}},
                                          {"xl/styles.xml", {styles}},
                                          {"xl/_rels/workbook.xml.rels", {workbookRelationships}},
                                          {"xl/worksheets/sheet1.xml", sheet.WorksheetPart(frozenRows)},
                                          {"xl/sharedStrings.xml", sheet.TextsPart()}};
  WriteZip(parts, created, target);
}

}  // namespace tolvan
