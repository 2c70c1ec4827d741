// What the fields of the daily sales panel do on focus, on key presses and when they are left.
#pragma once

#include <cstdint>
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

  /// The field is about to be left: it is put in order. False keeps the focus there; the user has been told why.
  bool Validate(std::string_view controlName);

  /// Every field, in their order, as far as the first that does not let go; that one gets the focus.
  bool ValidateAll();

  /// The check box whose state the address depends on.
  void chk_Click();

 private:
  bool ValidateEmail();

  const ComponentContext* context_;
  OptionsWindowView* view_;
};

}  // namespace tolvan
