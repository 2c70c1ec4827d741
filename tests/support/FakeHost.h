// A host in memory for the tests of everything above host/: what it is asked is answered from plain members, what it is
// told is kept in them.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/HostContext.h"
#include "host/XmlDocument.h"
#include "services/ComponentContext.h"

namespace tolvan::test {

struct FakeDialogs : Dialogs {
  struct Box {
    MessageIcon icon;
    std::string title;
    std::string text;
    bool operator==(const Box&) const = default;
  };

  void ShowMessage(MessageIcon icon, std::string_view title, std::string_view text) override {
    boxes.push_back({icon, std::string(title), std::string(text)});
  }
  bool AskYesNo(std::string_view, std::string_view text, bool yesIsDefault) override {
    questions.emplace_back(text);
    defaults.push_back(yesIsDefault);
    return yes;
  }
  std::optional<std::string> AskText(std::string_view, std::string_view prompt, std::string_view) override {
    questions.emplace_back(prompt);
    return std::exchange(answer, nextAnswer ? nextAnswer : answer);
  }
  std::optional<std::string> PickFileToOpen(std::string_view title, std::string_view filter) override {
    questions.push_back(std::string(title) + " " + std::string(filter));
    return answer;
  }
  std::optional<std::string> PickFileToSave(std::string_view title, std::string_view filter,
                                            std::string_view defaultName) override {
    questions.push_back(std::string(title) + " " + std::string(filter) + " " + std::string(defaultName));
    return answer;
  }
  std::optional<std::string> PickFolder(std::string_view title, std::string_view initial) override {
    questions.push_back(std::string(title) + " " + std::string(initial));
    return answer;
  }

  std::vector<Box> boxes;
  std::vector<std::string> questions;
  std::vector<bool> defaults;  ///< of the questions that are answered with yes or no: whether Enter says yes
  bool yes = false;
  std::optional<std::string> answer;
  std::optional<std::string> nextAnswer;  ///< to every text that is asked for after the first
};

struct FakeClock : Clock {
  DateTime Now() const override { return now; }
  DateTime now{.date = Date::FromParts(2024, 2, 1), .hour = 9, .minute = 0, .second = 0};
};

/// A user who stops the work: from the start when `requested`, with the n-th question when `questions` is n, and, when
/// `impatient`, as soon as he is told of a wait.
struct FakeInterruption : Interruption {
  bool Requested() const noexcept override {
    if (questions > 0 && --questions == 0) requested = true;
    return requested || (impatient && !told.empty());
  }
  void WaitBegins(std::string_view text) const noexcept override { told += text; }
  void WaitEnds() const noexcept override { told += " Ya."; }

  mutable bool requested = false;
  mutable int questions = 0;
  bool impatient = false;
  mutable std::string told;
};

struct ImpatientUser : FakeInterruption {
  ImpatientUser() { impatient = true; }
};

/// A window's status, which keeps what it was told.
struct FakeStatus : StatusWindow {
  struct Display : StatusDisplay {
    explicit Display(FakeStatus& owner) : window(&owner) {}
    void SetText(std::string_view text) override { window->texts.emplace_back(text); }
    void SetRange(std::int32_t maximum) override { window->range = maximum; }
    void Advance() override { ++window->advanced; }
    FakeStatus* window;
  };
  std::unique_ptr<StatusDisplay> OpenStatus() override { return std::make_unique<Display>(*this); }
  std::vector<std::string> texts;
  std::int32_t range = 0;
  std::int32_t advanced = 0;
};

/// A file that is read from memory.
class MemoryFile : public InputFile {
 public:
  explicit MemoryFile(std::string content) : content_(std::move(content)) {}
  std::uint64_t Size() const override { return content_.size(); }
  std::size_t Read(std::span<char> buffer) override {
    const std::size_t count = content_.copy(buffer.data(), buffer.size(), position_);
    position_ += count;
    return count;
  }

 private:
  std::string content_;
  std::size_t position_ = 0;
};

/// Files by path. Only folders in `folders` take files.
struct FakeFiles : FileHelper {
  struct Output : WholeFile {
    Output(FakeFiles& owner, std::string filePath) : files(&owner), path(std::move(filePath)) {}
    void Write(std::string_view bytes) override { content += bytes; }
    void Commit() override { files->contents[path] = content; }
    FakeFiles* files;
    std::string path;
    std::string content;
  };

  std::string NormalizeFolder(std::string_view folder) const override {
    std::string text(folder.empty() ? "/app" : folder);
    return text.ends_with('/') ? text : text + '/';
  }
  std::string Join(std::string_view folder, std::string_view name) const override {
    return NormalizeFolder(folder) + std::string(name);
  }
  std::string FormatForDisplay(std::string_view path) const override {
    return std::string(path.ends_with('/') ? path.substr(0, path.size() - 1) : path);
  }
  std::string CleanFileName(std::string_view name, bool, bool) const override { return std::string(name); }
  bool FileExists(std::string_view path) const override { return contents.contains(std::string(path)); }
  bool FolderExists(std::string_view path) const override { return folders.contains(std::string(path)); }
  bool IsSameFile(std::string_view path, std::string_view other) const override { return path == other; }
  void MakeFolder(std::string_view path) override { folders.insert(std::string(path)); }
  bool DeleteFile(std::string_view path) noexcept override { return contents.erase(std::string(path)) > 0; }
  std::optional<HostError> WriteTextFile(std::string_view text, std::string_view path) noexcept override {
    const std::string folder(path.substr(0, path.rfind('/')));
    if (!FolderExists(folder)) return HostError(HostErrorKind::Unreachable, "no existe", std::string(path));
    contents[std::string(path)] = text;
    return std::nullopt;
  }
  std::unique_ptr<WholeFile> CreateWhole(std::string_view path) override {
    return std::make_unique<Output>(*this, std::string(path));
  }
  std::unique_ptr<InputFile> OpenInput(std::string_view path) override {
    const auto found = contents.find(std::string(path));
    if (found == contents.end()) throw HostError(HostErrorKind::Unreachable, "no existe", std::string(path));
    return std::make_unique<MemoryFile>(found->second);
  }

  std::map<std::string, std::string> contents;
  std::set<std::string> folders;
};

struct FakeSettings : SettingsStore {
  void Define(const SettingDefault& value, std::string_view key, std::string_view index, std::string_view section,
              int kindFlag, int reserved) override {
    const auto* number = std::get_if<std::int16_t>(&value);
    const std::string text = number != nullptr ? std::to_string(*number) : std::get<std::string>(value);
    definitions.push_back(std::string(section) + "|" + std::string(index) + "|" + std::string(key) + "|" +
                          (number != nullptr ? "#" : "") + text + "|" + std::to_string(kindFlag) +
                          std::to_string(reserved));
    values.emplace(std::string(index), text);
  }
  void Load(std::string_view section) override { definitions.push_back("load " + std::string(section)); }
  void Save(std::string_view) override {
    if (saveFailure) throw *saveFailure;
    ++saves;
  }
  std::optional<std::string> Get(std::string_view, std::string_view index) const override {
    const auto found = values.find(std::string(index));
    return found == values.end() ? std::nullopt : std::optional(found->second);
  }
  bool Set(std::string_view, std::string_view index, std::string_view value) override {
    if (refuses) return false;
    values[std::string(index)] = value;
    return true;
  }
  std::string Notice() const override { return {}; }

  std::vector<std::string> definitions;
  std::map<std::string, std::string> values;
  std::optional<HostError> saveFailure;
  bool refuses = false;
  int saves = 0;
};

struct FakeMail : MailService {
  MailOutcome SendFile(std::string_view path, std::string_view recipient) override {
    sent.push_back(std::string(path) + " -> " + std::string(recipient));
    return outcome;
  }
  MailOutcome SendFileToChosenRecipient(std::string_view path) override { return SendFile(path, "?"); }
  std::vector<std::string> sent;
  MailOutcome outcome{MailStatus::Sent, {}};
};

/// Rows given in advance.
class FakeRecordset : public Recordset {
 public:
  FakeRecordset(std::vector<std::string> names, std::vector<std::vector<FieldValue>> rows)
      : names_(std::move(names)), rows_(std::move(rows)) {}

  using Recordset::Value;
  bool AtEnd() const override { return row_ >= rows_.size(); }
  void MoveNext() override { ++row_; }
  std::size_t FieldCount() const override { return names_.size(); }
  std::optional<std::size_t> FindField(std::string_view name) const override {
    const auto found = std::ranges::find(names_, name);
    return found == names_.end() ? std::nullopt : std::optional<std::size_t>(found - names_.begin());
  }
  FieldValue Value(std::size_t index) const override { return rows_[row_][index]; }
  std::string_view Text(std::size_t index) const override { return text_ = TextOf(Value(index)); }

 private:
  std::vector<std::string> names_;
  std::vector<std::vector<FieldValue>> rows_;
  std::size_t row_ = 0;
  mutable std::string text_;
};

/// Answers every query with `rows`, whose fields are `names`, and counts nothing. A test that needs SQL gives the real
/// provider, before which this one only writes down the statements and does something before each transaction.
struct FakeDatabase : DatabaseServices {
  std::unique_ptr<Recordset> OpenRecordset(const SqlStatement& statement) override {
    statements.push_back(statement);
    return real == nullptr ? answer(statement) : real->OpenRecordset(statement);
  }
  std::int64_t Execute(const SqlStatement& statement) override {
    statements.push_back(statement);
    return real == nullptr ? 1 : real->Execute(statement);
  }
  std::vector<BatchResult> RunBatch(std::span<const SqlStatement> batch) override {
    statements.insert(statements.end(), batch.begin(), batch.end());
    return real == nullptr ? std::vector<BatchResult>() : real->RunBatch(batch);
  }
  bool FindsCodesInAnyCase() const override { return real == nullptr || real->FindsCodesInAnyCase(); }
  std::unique_ptr<Transaction> BeginTransaction() override {
    if (real == nullptr) throw HostError(HostErrorKind::Failed, "sin transacciones");
    beforeTransaction();
    return real->BeginTransaction();
  }

  DatabaseServices* real = nullptr;
  std::function<void()> beforeTransaction = [] {};
  std::vector<SqlStatement> statements;
  std::vector<std::string> names;
  std::vector<std::vector<FieldValue>> rows;
  std::function<std::unique_ptr<Recordset>(const SqlStatement&)> answer = [this](const SqlStatement&) {
    return std::make_unique<FakeRecordset>(names, rows);
  };
};

struct MissingArchives : ArchiveReader {
  std::unique_ptr<Archive> OpenArchive(std::string_view) override { throw HostError(HostErrorKind::Configuration, {}); }
};

/// A machine without the library of transport documents.
struct MissingXmlLibrary : XmlLibrary {
  std::unique_ptr<XmlDocument> CreateDocument() override {
    ++attempts;
    throw HostError(HostErrorKind::Configuration, "no está instalado");
  }
  void OpenDownload(std::string_view address) noexcept override { opened = address; }

  int attempts = 0;
  std::string opened;
};

struct FakeServices : AppServices {
  std::string ApplicationFolder() const override { return "/app/"; }
  bool DiagnosticFlag() const override { return diagnostic; }
  std::int32_t ReadLayout(std::string_view section, std::string_view key, std::int32_t otherwise) const override {
    const auto found = layouts.find(std::string(section) + "/" + std::string(key));
    return found == layouts.end() ? otherwise : found->second;
  }
  void WriteLayout(std::string_view section, std::string_view key, std::int32_t value) noexcept override {
    layouts[std::string(section) + "/" + std::string(key)] = value;
  }
  bool IsEmailAddress(std::string_view text) const override { return text.find('@') != std::string_view::npos; }
  FileHelper& Files() override { return files; }
  ArchiveReader& Archives() override { return archives; }
  Dialogs& UserDialogs() override { return dialogs; }
  Clock& SystemClock() override { return clock; }
  Interruption& UserInterruption() override { return interruption; }

  bool diagnostic = false;
  std::map<std::string, std::int32_t> layouts;
  FakeFiles files;
  MissingArchives archives;
  FakeDialogs dialogs;
  FakeClock clock;
  FakeInterruption interruption;
};

struct FakeHttp : HttpClient {
  HttpResponse Get(const HttpRequest& request) override {
    requests.push_back(request);
    return requests.size() <= answers.size() ? answers[requests.size() - 1] : response;
  }
  std::vector<HttpRequest> requests;
  std::vector<HttpResponse> answers;  ///< to the first requests
  HttpResponse response;              ///< to every other
};

struct FakeApplication : HostApplication {
  std::string ProductName() const override { return "Tolvan"; }
  std::int32_t CompanyId() const override { return 1; }
  std::int32_t SiteId() const override { return 1; }
  std::string StoreId() const override { return storeId; }
  std::int32_t InventoryFlag() const override { return inventory; }
  std::string MoneyFormat() const override { return "#,##0.00"; }
  std::string SeparatorText() const override { return ","; }
  std::string DefaultEmailRecipient() const override { return "reportes@example.com"; }
  bool HasPermission(std::string_view name) const override { return permissions.contains(std::string(name)); }
  std::string TaxpayerLookupHost() const override { return {}; }
  std::string TaxpayerLookupViewState() const override { return {}; }
  std::string TaxpayerLookupEventValidation() const override { return {}; }
  std::string XmlLibraryDownload() const override { return {}; }
  DatabaseServices& Database() override {
    if (databaseFailure) throw *databaseFailure;
    return *database;
  }
  const SqlDialect& Dialect() const override { throw HostError(HostErrorKind::Failed, "sin dialecto"); }
  SettingsStore& Settings() override { return settings; }
  MailService& Mail() override { return mail; }
  HttpClient& Http() override { return http; }

  FakeDatabase fakeDatabase;
  DatabaseServices* database = &fakeDatabase;
  std::optional<HostError> databaseFailure;
  std::int32_t inventory = 0;
  std::string storeId = "0001";
  std::set<std::string> permissions;
  FakeSettings settings;
  FakeMail mail;
  FakeHttp http;
};

/// The whole host, with the component's settings defined.
struct FakeHost {
  FakeHost() { settings.Define(services.clock.Today(), application.DefaultEmailRecipient()); }

  FakeServices services;
  FakeApplication application;
  ImpExpSettings settings{application.settings};
  ComponentContext context{.services = services, .application = application, .settings = settings};
};

}  // namespace tolvan::test
