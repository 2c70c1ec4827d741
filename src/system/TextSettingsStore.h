// The component's numbered settings in a ValueFile. The entry of a setting is its section and its index.
//
// What Save writes, when another program may have written meanwhile:
//   - a value that Set changed: as it stands here;
//   - a value that Set confirmed (set to what it was): only when nothing is stored for it, so that a default once
//     confirmed no longer follows the day;
//   - everything else stays as it is stored, entries that this program does not define included.
// After Save the values in memory are those that are stored.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/SystemServices.h"
#include "system/ValueFile.h"

namespace tolvan {

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

}  // namespace tolvan
