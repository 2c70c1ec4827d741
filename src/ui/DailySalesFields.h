// The panel of the daily sales file: its values, how they are typed, their way between settings and controls, and what
// its fields do on focus, on key presses and when they are left.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "services/ComponentContext.h"
#include "ui/OptionsView.h"

namespace tolvan {

// Dates and times of day as the user types and reads them: "31/01/2024" and "19:00".

std::string DateText(Date date);

/// Day, month and year with "/", "-" or "." between them, blanks around; a year of two digits is one of this century.
/// Nothing when there is no such day, or the year is not from 1900 to 9999.
std::optional<Date> ParseDateText(std::string_view text);

std::string TimeText(TimeOfDay time);

/// Hour and minute with ":" or "." between them, or the hour alone. Nothing when there is no such time.
std::optional<TimeOfDay> ParseTimeText(std::string_view text);

/// `time` moved by minutes, around midnight.
TimeOfDay Moved(TimeOfDay time, int minutes);

/// What the panel holds.
struct DailySalesFields {
  std::string storeCode;
  Date date;
  std::optional<TimeOfDay> endOfDay;  ///< nothing where the settings hold no time
  std::string folder;                 ///< as the settings hold it, not as it is shown
  bool sendsMail = false;
  std::string address;
  std::string fileName;  ///< empty when none is forced
};

/// The values of the settings. The date is today's, not the stored one, and the folder never empty.
DailySalesFields LoadFields(const ComponentContext& context);

/// Writes them to the settings; nothing is made durable. Throws ApplicationError when the store refuses a value.
void StoreFields(const DailySalesFields& fields, ImpExpSettings& settings);

/// Shows them in the controls; a time that is missing leaves its control as it was.
void ShowFields(const DailySalesFields& fields, const FileHelper& files, OptionsView& view);

/// What the controls hold. Not the folder, of which they show a form for people.
DailySalesFields ReadFields(const OptionsView& view, std::string folder);

/// A forced file name as it is used: cleaned, and empty where cleaning makes "_", its word for an empty name, of it.
std::string CleanForcedName(const FileHelper& files, std::string_view name);

class FieldRules {
 public:
  /// Both must outlive the rules.
  FieldRules(const ComponentContext& context, OptionsView& view) : context_(&context), view_(&view) {}

  /// Selects all text where the field does so.
  void GotFocus(std::string_view controlName);

  /// Key 13 is Enter. A key that is 0 afterwards has been dealt with.
  void KeyPress(std::string_view controlName, std::int16_t& keyCode);

  /// The field is about to be left: it is put in order. False keeps the focus there; the user has been told why, and
  /// what was typed stands as it was.
  bool Validate(std::string_view controlName);

  /// What there is to say against a field as it stands.
  struct Objection {
    std::string_view controlName;
    std::string text;
  };

  /// Puts every field in order and finds the first, in the order of the panel, that cannot be saved as it is.
  std::optional<Objection> FirstObjection();

  /// Shows the text of an objection and leads to its field.
  void Refuse(const Objection& objection);

  /// The check box on which the address depends.
  void chk_Click();

 private:
  std::string ObjectionTo(std::string_view controlName) const;
  void PutInOrder(std::string_view controlName);
  void ShowObjection(std::string_view text) const;

  const ComponentContext* context_;
  OptionsView* view_;
};

}  // namespace tolvan
