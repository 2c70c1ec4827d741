#include "fiscal/TaxpayerRegistryImport.h"

#include <limits>

#include "base/Text.h"
#include "fiscal/clsInfoFiscalClienteDO.h"
#include "services/ComponentContext.h"

namespace tolvan {
namespace {

constexpr std::string_view finishedTitle = "Operación finalizada";

/// What a block may hold at most, so that memory does not grow with long names.
constexpr std::size_t blockTextLimit = 24U << 20;

/// File sizes scaled to the 32 bits of a progress bar.
class ProgressScale {
 public:
  explicit ProgressScale(std::uint64_t size) {
    while ((size >> shift_) > std::numeric_limits<std::int32_t>::max()) ++shift_;
  }
  std::int32_t Of(std::uint64_t bytes) const { return static_cast<std::int32_t>(bytes >> shift_); }

 private:
  unsigned shift_ = 0;
};

std::string StoppedText(const HostError& error) {
  std::string text = TextForPeople(error);
  if (error.Kind() == HostErrorKind::OutcomeUnknown) {
    // What its usual text warns of, repeating, is safe here.
    text = "Se perdió la conexión; un grupo de líneas puede haber quedado registrado sin contarse: ";
    text += error.what();
  }
  return text + std::string(lineBreak) +
         "La importación se detuvo; lo registrado queda guardado, y al repetirla continúa por sí sola.";
}

bool HoldsNul(std::string_view name) {
  return name.substr(0, longestName).find('\0') != std::string_view::npos;
}

}  // namespace

RegistryImportHost RegistryHostOf(const ComponentContext& context, Dialogs& dialogs, clsCallBackProgreso& progress) {
  return {.database = context.application.Database(),
          .dialect = context.application.Dialect(),
          .files = context.Files(),
          .archives = context.services.Archives(),
          .dialogs = dialogs,
          .interruption = context.services.UserInterruption(),
          .progress = progress};
}

TaxpayerRegistryImport::TaxpayerRegistryImport(const RegistryImportHost& host, RejectionTarget* rejections)
    : host_(host),
      rejections_(rejections),
      blockLines_(host.dialect.Engine().rowsPerTransaction),
      writer_(host.database, host.dialect, host.interruption, false) {}

void TaxpayerRegistryImport::ElegirArchivo() {
  const auto chosen = host_.dialogs.PickFileToOpen(registryPickerTitle, registryPickerFilter);
  if (chosen) path_ = *chosen;
}

bool TaxpayerRegistryImport::ImportarArchivoRNC(std::string& message) {
  counts_ = RegistryCounts();
  end_ = RegistryImportEnd::NotRun;
  block_.Clear();
  if (path_.empty()) ElegirArchivo();
  if (path_.empty()) return Refuse(message, std::string(registryNotChosen));
  std::optional<RegistryFile> file;
  try {
    file.emplace(host_.files, host_.archives, path_, host_.interruption);
  } catch (const NotTheRegistry& error) {
    return Refuse(message, error.what());
  } catch (const HostError& error) {
    if (error.Kind() != HostErrorKind::Unreachable) return Refuse(message, TextForPeople(error));
    return Refuse(message, "El archivo " + path_ + " no existe, favor seleccione la ubicación correcta del archivo");
  }
  const std::string failure = RunOnFile(*file);
  file.reset();
  host_.progress.ApagarProgreso();
  if (end_ != RegistryImportEnd::Finished) return Refuse(message, failure + std::string(lineBreak) + CountsText());
  if (HasNoRegistryLine()) {
    end_ = RegistryImportEnd::NotRun;
    return Refuse(message, "Ninguna línea del archivo " + path_ +
                               " tiene el separador |: el archivo no es el registro de contribuyentes");
  }
  ShowCounts();
  return true;
}

ActionReport TaxpayerRegistryImport::Import() {
  ActionReport report;
  std::string message;
  report.done = report.told = ImportarArchivoRNC(message);
  if (!report.done) report.text = std::string(lineBreak) + message;
  report.details = RegistryImportResult{.end = end_, .counts = counts_};
  return report;
}

bool TaxpayerRegistryImport::Refuse(std::string& message, std::string text) const {
  message = std::move(text);
  return false;
}

/// Sets how the run ended; the result is why it did not reach the file's end.
std::string TaxpayerRegistryImport::RunOnFile(RegistryFile& file) {
  end_ = RegistryImportEnd::FileFailed;
  try {
    ReadLines(file);
    WriteBlock();
    end_ = RegistryImportEnd::Finished;
    return {};
  } catch (const HostError& error) {
    if (error.Kind() != HostErrorKind::Interrupted) return StoppedText(error);
    end_ = RegistryImportEnd::Interrupted;
    return "Operación interrumpida. Lo registrado queda guardado, y al repetir la importación continúa por sí sola.";
  }
}

void TaxpayerRegistryImport::ReadLines(RegistryFile& file) {
  const std::uint64_t size = file.Size();
  const ProgressScale scale(size);
  RegistryLineReader reader(file, host_.interruption);
  RegistryLine line;
  std::uint64_t charactersRead = 0;
  while (reader.Next(line)) {
    ++counts_.lines;
    if (line.length == 0) continue;
    if (host_.interruption.Requested()) throw HostError(HostErrorKind::Interrupted, {});
    charactersRead += line.length;
    host_.progress.NotificarProgreso(true, scale.Of(size), scale.Of(charactersRead),
                                     "Realizando importación de datos, favor esperar...");
    TakeLine(line, file.IsUtf8());
    if (block_.Size() >= blockLines_ || block_.TextSize() >= blockTextLimit) WriteBlock();
  }
}

void TaxpayerRegistryImport::TakeLine(const RegistryLine& line, bool utf8) {
  const RegistryFields fields = CutRegistryLine(line);
  if (fields.kind == FieldsKind::NoSeparator) {
    ++counts_.skipped;
    if (rejections_ != nullptr) block_.AddRejected(counts_.lines, RejectionKind::Skipped, line.text, utf8);
    return;
  }
  // Stray characters in the identifier do not reject it: its validity alone decides. What is longer than the reader's
  // buffer is no identifier.
  identifier_ = fields.identifier;
  clsInfoFiscalClienteDO identity;
  identity.ReconocerRif(identifier_);
  if (!identity.EsValido()) {
    block_.AddRejected(counts_.lines, RejectionKind::InvalidIdentifier, line.text, utf8);
  } else if (HoldsNul(fields.name)) {
    block_.AddRejected(counts_.lines, RejectionKind::UnusableName, line.text, utf8);
  } else {
    block_.AddCustomer(counts_.lines, identity.ValorCodigo(), fields.name, utf8, identity.Personeria());
  }
}

void TaxpayerRegistryImport::WriteBlock() {
  if (block_.IsEmpty()) return;
  const std::optional<HostError> failure = writer_.Write(block_);
  CountBlock();
  block_.Clear();
  if (failure) {
    end_ = RegistryImportEnd::DatabaseFailed;
    throw HostError(*failure);
  }
}

/// Only lines with a "|" are counted, and only counted lines are written: nothing was.
bool TaxpayerRegistryImport::HasNoRegistryLine() const {
  return counts_.skipped > 0 && counts_.newCustomers == 0 && counts_.present == 0 && counts_.errors == 0;
}

/// Walks the block in the order of the file, so that the counts are those of a run line by line.
void TaxpayerRegistryImport::CountBlock() {
  const std::vector<BlockLine>& lines = block_.Lines();
  for (std::uint32_t place = 0; place < lines.size(); ++place) {
    switch (lines[place].outcome) {
      case LineOutcome::Inserted:
        ++counts_.newCustomers;
        break;
      case LineOutcome::Present:
        ++counts_.present;
        counts_.notRegistered = counts_.newCustomers + 1;  // deliberately set, not added to
        break;
      case LineOutcome::Rejected:
        Reject(place, lines[place]);
        break;
      case LineOutcome::Pending:
        break;
    }
  }
}

void TaxpayerRegistryImport::Reject(std::uint32_t place, const BlockLine& line) {
  if (line.rejection != RejectionKind::Skipped) ++counts_.errors;
  if (rejections_ == nullptr) return;
  const bool byDatabase = line.rejection == RejectionKind::StatementFailed;
  const std::string excerpt = block_.ExcerptOf(line);
  rejections_->LineRejected({.line = line.number,
                             .kind = line.rejection,
                             .detail = byDatabase ? std::string_view(writer_.MessageFor(place)) : std::string_view(),
                             .excerpt = excerpt});
}

void TaxpayerRegistryImport::ShowCounts() const {
  host_.dialogs.ShowMessage(MessageIcon::Information, finishedTitle, "Operación finalizada. \r\n\r\n" + CountsText());
}

std::string TaxpayerRegistryImport::CountsText() const {
  return "Nuevos clientes registrados: " + std::to_string(counts_.newCustomers) +
         "\r\nClientes no registrados: " + std::to_string(counts_.notRegistered) +
         "\r\nLineas con errores: " + std::to_string(counts_.errors);
}

bool TaxpayerRegistryImport::RegistrarClienteRNC(std::string_view identifier, std::string_view name, std::string_view,
                                                 bool& inserted, bool active) {
  inserted = false;
  std::string typed(identifier);
  clsInfoFiscalClienteDO identity;
  identity.ReconocerRif(typed);
  if (!identity.EsValido()) return false;
  const std::string code = identity.ValorCodigo();
  const CustomerStatement customer(host_.dialect, active);
  SqlStatement statement = customer.Blank();
  customer.Fill(statement,
                {.code = code, .name = FirstCharacters(name, longestName), .personeria = identity.Personeria()});
  try {
    inserted = host_.database.Execute(statement) > 0;
    return true;
  } catch (const HostError& error) {
    if (!IsFailureOfStatement(error)) throw;
    return false;
  }
}

}  // namespace tolvan
