// The providers that lie in modules: libraries of the program's own, which are loaded when something of them is first
// used, because linking what they stand on costs every start of a program more than a short command itself takes.
//
// The rule at a module's edge: an entry point gives an object that its caller owns, and never null. What it throws, and
// what the object throws later, comes through as from any other function; a HostError is the same type on both sides.
#pragma once

#include <memory>
#include <string>

#include "host/FileHelper.h"
#include "host/NetworkServices.h"
#include "host/SpreadsheetApplication.h"
#include "host/SystemServices.h"
#include "host/XmlDocument.h"
#include "network/CurlServices.h"
#include "spreadsheet/LocalSpreadsheetApplication.h"
#include "system/posix/PosixServices.h"
#include "xml/PugiXmlLibrary.h"

namespace tolvan {

/// What an entry point of a module makes. `EntryPoint` is the type of that function.
template <class EntryPoint>
class Deferred;

template <class Interface, class... Given>
class Deferred<Interface*(Given...)> {
 public:
  /// `file` is the module's, `name` the entry point's; `purpose` names the module to people ("el módulo de XML").
  Deferred(const char* file, const char* name, const char* purpose) : module_(file, purpose), name_(name) {}

  /// Throws HostError Configuration when the module cannot be loaded, and what the making throws. Never null.
  std::unique_ptr<Interface> Make(Given... given) {
    return std::unique_ptr<Interface>(module_.template EntryPoint<Interface*(Given...)>(name_)(given...));
  }

  /// The one that the first call makes; it lives as long as this object. Throws as Make does.
  Interface& One(Given... given) {
    if (!made_) made_ = Make(given...);
    return *made_;
  }

 private:
  ModuleLoader module_;
  const char* name_;
  std::unique_ptr<Interface> made_;
};

class DeferredArchiveReader final : public ArchiveReader {
 public:
  std::unique_ptr<Archive> OpenArchive(std::string_view path) override { return reader_.One().OpenArchive(path); }

 private:
  Deferred<TolvanMakeArchiveReader> reader_{spreadsheetModuleFile, "tolvanMakeArchiveReader",
                                            "el módulo de libros de Excel y archivos comprimidos"};
};

class DeferredSpreadsheetApplication final : public SpreadsheetApplication {
 public:
  /// The references must outlive the object; `newWorkbookFolder` (absolute, made when missing) takes the workbooks that
  /// are opened for the user.
  DeferredSpreadsheetApplication(const Clock& clock, FileHelper& files, std::string newWorkbookFolder)
      : clock_(clock), files_(files), newWorkbookFolder_(std::move(newWorkbookFolder)) {}

  /// A module that cannot be loaded is an application that is not installed: HostError Unreachable.
  void Start() override { static_cast<void>(Application()); }
  std::unique_ptr<WorksheetReader> OpenFirstWorksheet(std::string_view path,
                                                      const Interruption& interruption) override {
    return Application().OpenFirstWorksheet(path, interruption);
  }
  std::unique_ptr<NewWorkbook> CreateFromTemplate(std::string_view templatePath, std::uint32_t headingRows) override {
    return Application().CreateFromTemplate(templatePath, headingRows);
  }

 private:
  SpreadsheetApplication& Application();

  const Clock& clock_;
  FileHelper& files_;
  std::string newWorkbookFolder_;
  Deferred<TolvanMakeSpreadsheetApplication> application_{spreadsheetModuleFile, "tolvanMakeSpreadsheetApplication",
                                                          "el módulo de libros de Excel"};
};

/// Without the module the library is missing. Documents may outlive this object.
class DeferredXmlLibrary final : public XmlLibrary {
 public:
  std::unique_ptr<XmlDocument> CreateDocument() override { return library_.One().CreateDocument(); }

  /// The module comes with the program: there is nothing to download.
  void OpenDownload(std::string_view /*address*/) noexcept override {}

 private:
  Deferred<TolvanMakeXmlLibrary> library_{xmlModuleFile, "tolvanMakeXmlLibrary", "el módulo de XML"};
};

inline constexpr const char* networkModulePurpose = "el módulo de correo y red";

class DeferredHttpClient final : public HttpClient {
 public:
  /// `interruption` must outlive the object.
  explicit DeferredHttpClient(const Interruption& interruption) : interruption_(interruption) {}

  /// Without the module no request succeeds.
  HttpResponse Get(const HttpRequest& request) override;

 private:
  const Interruption& interruption_;
  Deferred<TolvanMakeHttpClient> client_{networkModuleFile, "tolvanMakeHttpClient", networkModulePurpose};
};

/// Sends through the module, after asking for the recipient where none is given.
class DeferredMailService final : public MailService {
 public:
  /// `dialogs` is null where there is no user to ask. The references must outlive the object.
  DeferredMailService(SmtpOptions options, FileHelper& files, const Interruption& interruption, Dialogs* dialogs)
      : options_(std::move(options)), files_(files), interruption_(interruption), dialogs_(dialogs) {}

  MailOutcome SendFile(std::string_view path, std::string_view recipient) override;

  /// Asks again while the text is no mail address.
  MailOutcome SendFileToChosenRecipient(std::string_view path) override;

 private:
  MailService& Sender() { return sender_.One(options_, files_, interruption_); }

  SmtpOptions options_;
  FileHelper& files_;
  const Interruption& interruption_;
  Dialogs* dialogs_;
  Deferred<TolvanMakeMailService> sender_{networkModuleFile, "tolvanMakeMailService", networkModulePurpose};
};

}  // namespace tolvan
