#include "services/clsCallBackProgreso.h"

#include <gmock/gmock.h>

#include <optional>
#include <stdexcept>
#include <vector>

namespace tolvan {
namespace {

using testing::ElementsAre;

/// All controls of a window in one, writing down what was done to them.
class Controls : public ProgressContainer,
                 public ProgressBar,
                 public ProgressCaption,
                 public LogTarget,
                 public LogContext,
                 public MessagePump {
 public:
  void SetVisible(bool visible) override { Note(visible ? "show" : "hide"); }
  void SetMin(std::int32_t minimum) override { Note("min " + std::to_string(minimum)); }
  void SetValue(std::int32_t value) override { Note("value " + std::to_string(value)); }
  void SetMax(std::int32_t maximum) override {
    max_ = maximum;
    Note("max " + std::to_string(maximum));
  }
  std::int32_t Max() const override { return max_; }
  void SetCaption(std::string_view text) override { Note("caption " + std::string(text)); }
  void AppendLog(std::string_view text, bool flag, LogContext* context) override {
    Note("log" + std::string(text) + (flag ? " flagged" : "") + (context == this ? "" : " without context"));
  }
  void ProcessPending() override { Note("pump"); }

  std::vector<std::string> Taken() { return std::exchange(notes_, {}); }
  bool failing = false;

 private:
  void Note(const std::string& text) {
    notes_.push_back(text);
    if (failing) throw std::runtime_error("a control that is gone");
  }

  std::int32_t max_ = 100;
  std::vector<std::string> notes_;
};

TEST(clsCallBackProgreso, DrivesTheControlsThroughOneRun) {
  Controls controls;
  std::optional<clsCallBackProgreso> progress(&controls);
  progress->EstablecerControles(&controls, &controls, &controls, &controls, &controls);
  EXPECT_THAT(controls.Taken(), ElementsAre("hide"));
  progress->ApagarProgreso();
  EXPECT_THAT(controls.Taken(), ElementsAre()) << "nothing is visible yet";

  progress->NotificarProgreso(true, 10, 4, "Leyendo");
  EXPECT_THAT(controls.Taken(),
              ElementsAre("caption Leyendo", "show", "min 0", "value 0", "max 10", "value 4", "pump"));
  progress->NotificarProgreso(true, 500, 4, "Leyendo");
  EXPECT_THAT(controls.Taken(), ElementsAre()) << "a new maximum alone changes nothing";
  progress->NotificarProgreso(true, 500, 99, "leyendo");
  EXPECT_THAT(controls.Taken(), ElementsAre("caption leyendo", "value 10", "pump")) << "past the end the bar is full";

  EXPECT_FALSE(progress->LogOK(false));
  EXPECT_TRUE(progress->LogOK(true));
  progress->AgregarLog(" Linea", true);
  EXPECT_THAT(controls.Taken(), ElementsAre("log ...ERROR", "log ...OK", "log Linea flagged"));

  progress->ApagarProgreso();
  EXPECT_THAT(controls.Taken(), ElementsAre("caption ", "hide"));
  progress->NotificarProgreso(true, 3, 0, "");
  controls.Taken();
  progress.reset();
  EXPECT_THAT(controls.Taken(), ElementsAre("hide")) << "left on, it is hidden at the end";
}

TEST(clsCallBackProgreso, NeverFailsTowardsItsCaller) {
  Controls controls;
  clsCallBackProgreso unbound(&controls);
  unbound.NotificarProgreso(true, 10, 5, "Leyendo");
  EXPECT_FALSE(unbound.LogOK(false));
  EXPECT_THAT(controls.Taken(), ElementsAre("pump"));

  controls.failing = true;
  clsCallBackProgreso progress(&controls);
  progress.EstablecerControles(&controls, &controls, &controls, &controls, nullptr);
  progress.NotificarProgreso(true, 10, 5, "Leyendo");
  progress.AgregarLog("", false);
  EXPECT_THAT(controls.Taken(), ElementsAre("hide", "caption Leyendo", "show", "min 0", "value 0", "max 10", "value 5",
                                            "pump", "log without context"));
}

}  // namespace
}  // namespace tolvan
