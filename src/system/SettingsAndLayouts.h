// What a program keeps for its user between two runs, each in a ValueFile: the component's settings, and where windows
// were left.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "host/SystemServices.h"
#include "system/ValueFile.h"

namespace tolvan {

/// The component's numbered settings. The entry of a setting is its section and its index.
///
/// What Save writes, when another program may have written meanwhile:
///   - a value that Set changed: as it stands here;
///   - a value that Set confirmed (set to what it was): only when nothing is stored for it, so that a default once
///     confirmed no longer follows the day;
///   - everything else stays as it is stored, including entries that this program does not define.
/// After Save the values in memory are those that are stored.
class TextSettingsStore final : public SettingsStore {
 public:
  explicit TextSettingsStore(ValueFile file) : file_(std::move(file)) {}

  void Define(const SettingDefault& defaultValue, std::string_view key, std::string_view indexText,
              std::string_view section, int kindFlag, int reserved) override;
  void Load(std::string_view section) override;
  void Save(std::string_view section) override;
  std::optional<std::string> Get(std::string_view section, std::string_view indexText) const override;
  bool Set(std::string_view section, std::string_view indexText, std::string_view value) override;
  std::string Notice() const override { return notice_; }

 private:
  struct Setting {
    std::string key;
    std::string defaultValue;
    bool wholeNumber = false;
    std::string value;
    std::string known;  ///< the value at the last Load or Save
    bool wasSet = false;
  };

  /// Takes what is stored for the section; a value of the wrong kind is the default, and its key is returned.
  std::vector<std::string> Adopt(std::string_view section, const NamedValues& stored);

  ValueFile file_;
  std::map<ValueName, Setting> settings_;
  NamedValues lastRead_;
  std::string notice_;
};

/// Where windows were left. Nothing in it is worth a message, so failures of any kind end in the default and in nothing
/// written.
class LayoutStore {
 public:
  explicit LayoutStore(ValueFile file) : file_(std::move(file)) {}

  std::int32_t Read(std::string_view section, std::string_view key, std::int32_t defaultValue) noexcept;
  void Write(std::string_view section, std::string_view key, std::int32_t value) noexcept;

 private:
  ValueFile file_;
};

}  // namespace tolvan
