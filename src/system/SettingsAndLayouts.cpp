#include "system/SettingsAndLayouts.h"

#include <algorithm>
#include <exception>

#include "base/Text.h"

namespace tolvan {
namespace {

ValueName EntryNameOf(std::string_view section, std::string_view indexText) {
  return {std::string(section), std::string(indexText)};
}

std::string TextOfDefault(const SettingDefault& value) {
  if (const auto* number = std::get_if<std::int16_t>(&value)) return std::to_string(*number);
  return std::get<std::string>(value);
}

std::optional<std::string> Accepted(std::string_view value, bool wholeNumber) {
  if (!wholeNumber) return std::string(value);
  const std::optional<std::int32_t> number = ParseInteger(value);
  if (!number) return std::nullopt;
  return std::to_string(*number);
}

std::string NoticeOfDamage(const std::string& path, const std::string& putAsideUnder) {
  const std::string text = "El archivo de opciones está dañado; se usan los valores iniciales.\r\n" + path;
  if (putAsideUnder.empty()) return text;
  return text + "\r\nEl archivo dañado se conserva como:\r\n" + putAsideUnder;
}

std::string NoticeOfValues(const std::string& path, const std::vector<std::string>& keys) {
  if (keys.empty()) return {};
  std::string text = "Estas opciones tenían un valor que no es un número entero y toman su valor inicial:";
  for (const std::string& key : keys) text.append(" ").append(key);
  return text.append("\r\n").append(path);
}

}  // namespace

void TextSettingsStore::Define(const SettingDefault& defaultValue, std::string_view key, std::string_view indexText,
                               std::string_view section, int kindFlag, int /*reserved*/) {
  const auto [place, isNew] = settings_.try_emplace(EntryNameOf(section, indexText));
  Setting& setting = place->second;
  setting.key = key;
  setting.defaultValue = TextOfDefault(defaultValue);
  setting.wholeNumber = kindFlag == 1;
  if (isNew) setting.value = setting.known = setting.defaultValue;
}

void TextSettingsStore::Load(std::string_view section) {
  ValueFile::Content content = file_.Read();
  lastRead_ = std::move(content.values);
  const std::vector<std::string> refused = Adopt(section, lastRead_);
  notice_ =
      content.damaged ? NoticeOfDamage(file_.Path(), content.putAsideUnder) : NoticeOfValues(file_.Path(), refused);
}

std::vector<std::string> TextSettingsStore::Adopt(std::string_view section, const NamedValues& stored) {
  std::vector<std::string> refused;
  for (auto& [name, setting] : settings_) {
    if (name.first != section) continue;
    const auto found = stored.find(name);
    std::optional<std::string> value;
    if (found != stored.end()) {
      value = Accepted(found->second, setting.wholeNumber);
      if (!value) refused.push_back(setting.key);
    }
    setting.value = setting.known = value.value_or(setting.defaultValue);
    setting.wasSet = false;
  }
  return refused;
}

void TextSettingsStore::Save(std::string_view section) {
  NamedValues confirmed;
  NamedValues changed;
  for (const auto& [name, setting] : settings_) {
    if (name.first != section || !setting.wasSet) continue;
    (setting.value == setting.known ? confirmed : changed).emplace(name, setting.value);
  }
  const bool allStored = std::all_of(confirmed.begin(), confirmed.end(),
                                     [this](const auto& entry) { return lastRead_.contains(entry.first); });
  if (changed.empty() && allStored) return;
  const auto overlay = [&](NamedValues& values) {
    for (const auto& [name, value] : changed) values.insert_or_assign(name, value);
    for (const auto& [name, value] : confirmed) values.emplace(name, value);
  };
  lastRead_ = file_.Change(overlay, lastRead_);
  Adopt(section, lastRead_);
}

std::optional<std::string> TextSettingsStore::Get(std::string_view section, std::string_view indexText) const {
  const auto found = settings_.find(EntryNameOf(section, indexText));
  if (found == settings_.end()) return std::nullopt;
  return found->second.value;
}

bool TextSettingsStore::Set(std::string_view section, std::string_view indexText, std::string_view value) {
  const auto found = settings_.find(EntryNameOf(section, indexText));
  if (found == settings_.end()) return false;
  std::optional<std::string> accepted = Accepted(value, found->second.wholeNumber);
  if (!accepted) return false;
  found->second.value = std::move(*accepted);
  found->second.wasSet = true;
  return true;
}

std::int32_t LayoutStore::Read(std::string_view section, std::string_view key, std::int32_t defaultValue) noexcept {
  try {
    const NamedValues values = file_.Read().values;
    const auto found = values.find(ValueName(section, key));
    if (found == values.end()) return defaultValue;
    return ParseInteger(found->second).value_or(defaultValue);
  } catch (const std::exception&) {
    return defaultValue;  // The contract of ReadLayout: what cannot be read is the default.
  }
}

void LayoutStore::Write(std::string_view section, std::string_view key, std::int32_t value) noexcept {
  try {
    file_.Change([&](NamedValues& values) { values[ValueName(section, key)] = std::to_string(value); });
  } catch (const std::exception&) {
    // The contract of WriteLayout: the window opens at its default place the next time.
    return;
  }
}

}  // namespace tolvan
