// What the fields of the daily sales panel do on focus, on key presses and when they are left.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "services/ComponentContext.h"
#include "ui/OptionsWindowView.h"

namespace tolvan {

class FieldRules {
 public:
  /// Both must outlive the rules.
  FieldRules(const ComponentContext& context, OptionsWindowView& view) : context_(&context), view_(&view) {}

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

  /// The check box whose state the address depends on.
  void chk_Click();

 private:
  std::string ObjectionTo(std::string_view controlName);
  void PutInOrder(std::string_view controlName);
  void Tell(std::string_view text) const;

  const ComponentContext* context_;
  OptionsWindowView* view_;
};

}  // namespace tolvan
