#include "ui/HeadlessOpcionesView.h"

#include "ui/FieldTexts.h"

namespace tolvan {

const HeadlessOpcionesView::Control& HeadlessOpcionesView::Get(std::string_view controlName) const {
  static const Control untouched;
  const auto found = controls_.find(controlName);
  return found == controls_.end() ? untouched : found->second;
}

HeadlessOpcionesView::Control& HeadlessOpcionesView::Get(std::string_view controlName) {
  return controls_[std::string(controlName)];
}

std::string HeadlessOpcionesView::Text(std::string_view controlName) const {
  return Get(controlName).text;
}
void HeadlessOpcionesView::SetText(std::string_view controlName, std::string_view text) {
  Get(controlName).text = text;
}

bool HeadlessOpcionesView::Checked(std::string_view controlName) const {
  return Get(controlName).checked;
}
void HeadlessOpcionesView::SetChecked(std::string_view controlName, bool checked) {
  Get(controlName).checked = checked;
}

bool HeadlessOpcionesView::Enabled(std::string_view controlName) const {
  return Get(controlName).enabled;
}
void HeadlessOpcionesView::SetEnabled(std::string_view controlName, bool enabled) {
  Get(controlName).enabled = enabled;
}

Date HeadlessOpcionesView::DateOf(std::string_view controlName) const {
  return ParseDateText(Text(controlName)).value_or(Get(controlName).date);
}
void HeadlessOpcionesView::SetDate(std::string_view controlName, Date date) {
  Get(controlName).date = date;
  SetText(controlName, DateText(date));
}

TimeOfDay HeadlessOpcionesView::TimeOf(std::string_view controlName) const {
  return ParseTimeText(Text(controlName)).value_or(Get(controlName).time);
}
void HeadlessOpcionesView::SetTime(std::string_view controlName, TimeOfDay time) {
  Get(controlName).time = time;
  SetText(controlName, TimeText(time));
}

void HeadlessOpcionesView::Focus(std::string_view) {}

}  // namespace tolvan
