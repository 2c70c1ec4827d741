// What the review window knows of an importer. The operations stand in their slot order, which other programs rely on;
// classes implement them under the names that begin with the interface's.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/UserInterface.h"
#include "import/ReviewList.h"

namespace tolvan {

class IClaseImportar {
 public:
  /// Applies the reviewed rows, with a status display over `reviewWindow`. True only when they were committed.
  bool Iniciar(StatusWindow& reviewWindow) { return IClaseImportar_Iniciar(reviewWindow); }

  std::int32_t NumeroRenglones() const { return IClaseImportar_NumeroRenglones(); }
  std::int32_t NumeroNuevos() const { return IClaseImportar_NumeroNuevos(); }        ///< or not associated
  std::int32_t NumeroAsociados() const { return IClaseImportar_NumeroAsociados(); }  ///< with an existing item

  /// Fills the list with the rows of a tab (from 1) when `row` is 0; else brings that one row up to date.
  void PintarLV(ReviewList& list, std::int32_t row, int tab) { IClaseImportar_PintarLV(list, row, tab); }

  /// Which entries of the row menu are enabled, in their order; none for a row that does not exist.
  void DeterminarAtributosMenu(std::int32_t row, bool& associate, bool& dissociate, bool& setCode) const {
    IClaseImportar_DeterminarAtributosMenu(row, associate, dissociate, setCode);
  }

  /// Associates a row with an item, or with none when the code is empty. False, and no change, when it cannot be.
  bool AsignarItem(std::int32_t row, std::string_view item) { return IClaseImportar_AsignarItem(row, item); }

  /// Sets the code under which a row will be created. False, and no change, when it cannot be.
  bool AsignarNuevoItem(std::int32_t row, std::string_view code) { return IClaseImportar_AsignarNuevoItem(row, code); }

  virtual ~IClaseImportar() = default;

 private:
  virtual bool IClaseImportar_Iniciar(StatusWindow& reviewWindow) = 0;
  virtual std::int32_t IClaseImportar_NumeroRenglones() const = 0;
  virtual std::int32_t IClaseImportar_NumeroNuevos() const = 0;
  virtual std::int32_t IClaseImportar_NumeroAsociados() const = 0;
  virtual void IClaseImportar_PintarLV(ReviewList& list, std::int32_t row, int tab) = 0;
  virtual void IClaseImportar_DeterminarAtributosMenu(std::int32_t row, bool& associate, bool& dissociate,
                                                      bool& setCode) const = 0;
  virtual bool IClaseImportar_AsignarItem(std::int32_t row, std::string_view item) = 0;
  virtual bool IClaseImportar_AsignarNuevoItem(std::int32_t row, std::string_view code) = 0;
};

}  // namespace tolvan
