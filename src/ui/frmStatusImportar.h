// The review window without its toolkit: the rows of an import on three tabs, the menu that corrects single rows, and
// the decision to go on or not. It knows the importer only through IClaseImportar.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "import/ImportReview.h"
#include "services/ComponentContext.h"
#include "ui/ReviewView.h"

namespace tolvan {

class frmStatusImportar final : public ImportReview {
 public:
  static constexpr std::string_view caption = "Resultados Lectura Archivo";

  /// Makes the view of the window, which forwards its events to the logic and dies with it. Never null.
  using ViewFactory = std::function<std::unique_ptr<ReviewView>(frmStatusImportar& logic)>;

  /// `context` must outlive the window.
  frmStatusImportar(const ComponentContext& context, const ViewFactory& makeView)
      : context_(&context), view_(makeView(*this)) {}

  void SetClase(IClaseImportar& importer) override { importer_ = &importer; }

  void RefrescarSumario() override;
  ReviewList& lvStatus() override { return view_->lvStatus(); }

  /// Shows tab 1's explanation, accept disabled, and returns when the window is closed.
  void ShowModal() override;

  /// `tab` is 1 to 3.
  void tabFiltro_Click(int tab);

  /// Another line was selected, or none; `row` is its row, or 0. Its note is shown, or that of the whole list.
  void lvStatus_ItemClick(std::int32_t row);

  /// A released mouse button over the list; `row` is the selected line's, 0 when none is selected. Only the right
  /// button (2) does anything.
  void lvStatus_MouseUp(int button, std::int32_t row);

  /// An entry of the row menu (0 to 2), for a row that must be selected (above 0). Whether it changed the row.
  bool mnuRenglonR_Click(int entry, std::int32_t row);

  /// The third entry with the code already asked for.
  bool EstablecerCodigo(std::int32_t row, std::string_view answer);

  void Check1_Click(bool checked) { view_->EnableAccept(checked); }

  /// Applies the import; the window stays open when that fails. True when it was applied.
  bool bAceptar_Click();

  /// Closes; after changes by hand, which would be lost, only when the user says so.
  void bCancelar_Click();

  /// The close box: always refused, and treated as cancel. False.
  bool QueryUnload();

 private:
  bool AsksForCode(std::int32_t row);
  bool AsociarConBusqueda(std::int32_t row);
  bool Repaint(std::int32_t row, bool changed);
  ReviewLine LineOf(std::int32_t row) const;
  void ForgetFile();
  void Warn(std::string_view text) const;

  const ComponentContext* context_;
  IClaseImportar* importer_ = nullptr;
  std::string changeNote_;  // what else the last change changed; until another tab is chosen
  int changes_ = 0;         // made by hand and not applied
  int tab_ = 1;
  bool applying_ = false;
  std::unique_ptr<ReviewView> view_;  // made last, because it may ask the logic at once
};

}  // namespace tolvan
