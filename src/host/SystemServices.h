// What the component takes from the machine beside files: the time, digests, and settings that outlive a run.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "base/Calendar.h"

namespace tolvan {

/// The date and time that count as now, in the store's local time. Tests and the demo store set it.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;
  Date Today() const { return Now().date; }
};

/// Digests of bytes, as lower-case hexadecimal text.
class HashService {
 public:
  virtual ~HashService() = default;

  /// 32 characters.
  virtual std::string Md5(std::string_view bytes) const = 0;
};

/// A default: a number passed as a 16-bit integer, or a text.
using SettingDefault = std::variant<std::int16_t, std::string>;

/// Numbered settings by section. The component defines each setting with its default before it loads the stored values;
/// what is not defined is not kept.
class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  /// Defines a setting. `indexText` is the number inside the section as decimal text. `kindFlag` 1 restricts the
  /// setting to whole numbers, 0 to none. `reserved` is 0. Defining again replaces key, default and kind and keeps the
  /// value.
  virtual void Define(const SettingDefault& defaultValue, std::string_view key, std::string_view indexText,
                      std::string_view section, int kindFlag, int reserved) = 0;

  /// Reads the stored values of a section; a setting that is not stored has its default. A damaged store is put aside,
  /// everything takes its default, and Notice says so. Throws HostError Access when the store exists and cannot be
  /// read.
  virtual void Load(std::string_view section) = 0;

  /// Makes the changed values of the section durable: all or none of them. Values that another program changed since
  /// Load, and this one did not, are kept as that program left them. Throws HostError when nothing was written.
  virtual void Save(std::string_view section) = 0;

  /// The current value, numbers as decimal text; nothing when no such setting is defined.
  virtual std::optional<std::string> Get(std::string_view section, std::string_view indexText) const = 0;

  /// Changes the value in memory. False, and no change, when there is no such setting or it refuses the value.
  virtual bool Set(std::string_view section, std::string_view indexText, std::string_view value) = 0;

  /// What the user should be told about the last Load, in Spanish; empty when all was well.
  virtual std::string Notice() const = 0;
};

}  // namespace tolvan
