// The review window as an importer sees it, and how an importer comes by one.
#pragma once

#include <functional>
#include <memory>

#include "import/IClaseImportar.h"

namespace tolvan {

class ImportReview {
 public:
  virtual ~ImportReview() = default;

  virtual void SetClase(IClaseImportar& importer) = 0;

  /// Shows the importer's counters anew.
  virtual void RefrescarSumario() = 0;

  virtual ReviewList& lvStatus() = 0;

  /// Returns when the window is closed.
  virtual void ShowModal() = 0;
};

/// Makes a review window. Never null.
using ImportReviewFactory = std::function<std::unique_ptr<ImportReview>()>;

}  // namespace tolvan
