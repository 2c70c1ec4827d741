#include "fiscal/RegistryReport.h"

namespace tolvan {
namespace {

constexpr std::size_t writeSize = 64U << 10;

std::string_view CauseOf(RejectionKind kind) {
  switch (kind) {
    case RejectionKind::Skipped:
      return "omitida: no tiene el separador |";
    case RejectionKind::InvalidIdentifier:
      return "el identificador no es un RNC ni una cédula válidos";
    case RejectionKind::UnusableName:
      return "el nombre contiene un carácter nulo";
    case RejectionKind::StatementFailed:
      break;
  }
  return "la base de datos rechazó el registro";
}

void AppendShown(std::string& text, std::string_view part) {
  for (const char c : part) text += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
}

}  // namespace

std::string RejectionLine(const Rejection& rejection) {
  std::string line = std::to_string(rejection.line);
  line.append("\t").append(CauseOf(rejection.kind));
  if (!rejection.detail.empty()) AppendShown(line.append(": "), rejection.detail);
  AppendShown(line.append("\t"), rejection.excerpt);
  return line.append("\n");
}

void RejectionReport::LineRejected(const Rejection& rejection) {
  pending_ += RejectionLine(rejection);
  if (pending_.size() < writeSize) return;
  file_.Write(pending_);
  pending_.clear();
}

void RejectionReport::Commit() {
  file_.Write(pending_);
  pending_.clear();
  file_.Commit();
}

void RejectionList::LineRejected(const Rejection& rejection) {
  const std::string line = RejectionLine(rejection);
  if (notKept_ > 0 || text_.size() + line.size() > limit) {
    ++notKept_;
  } else {
    text_ += line;
  }
}

void RejectionList::SaveTo(FileHelper& files, std::string_view path) const {
  const std::unique_ptr<WholeFile> file = files.CreateWhole(path);
  file->Write(text_);
  if (notKept_ > 0) file->Write("… y " + std::to_string(notKept_) + " líneas más\n");
  file->Commit();
}

}  // namespace tolvan
