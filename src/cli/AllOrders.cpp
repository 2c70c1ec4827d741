#include "cli/Order.h"
#include "cli/OrderAyuda.h"
#include "cli/OrderColector.h"
#include "cli/OrderCrc32.h"
#include "cli/OrderDemo.h"
#include "cli/OrderEsquema.h"
#include "cli/OrderImportarExcel.h"
#include "cli/OrderImportarMovilnet.h"
#include "cli/OrderImportarRnc.h"
#include "cli/OrderLote.h"
#include "cli/OrderOpciones.h"
#include "cli/OrderPlantilla.h"
#include "cli/OrderRnc.h"
#include "cli/OrderSubirVentas.h"
#include "cli/OrderVentana.h"
#include "cli/OrderVentas.h"
#include "cli/OrderVexlor.h"

namespace tolvan {

std::vector<std::unique_ptr<Order>> AllOrders() {
  std::vector<std::unique_ptr<Order>> orders;
  orders.push_back(std::make_unique<OrderDemo>());
  orders.push_back(std::make_unique<OrderVentana>());
  orders.push_back(std::make_unique<OrderVexlor>());
  orders.push_back(std::make_unique<OrderVentas>());
  orders.push_back(std::make_unique<OrderSubirVentas>());
  orders.push_back(std::make_unique<OrderImportarExcel>());
  orders.push_back(std::make_unique<OrderImportarMovilnet>());
  orders.push_back(std::make_unique<OrderPlantilla>());
  orders.push_back(std::make_unique<OrderImportarRnc>());
  orders.push_back(std::make_unique<OrderRnc>());
  orders.push_back(std::make_unique<OrderColector>());
  orders.push_back(std::make_unique<OrderLote>());
  orders.push_back(std::make_unique<OrderCrc32>());
  orders.push_back(std::make_unique<OrderEsquema>());
  orders.push_back(std::make_unique<OrderOpciones>());
  orders.push_back(std::make_unique<OrderAyuda>());
  return orders;
}

std::vector<OrderDefinition> AllDefinitions() {
  std::vector<OrderDefinition> definitions;
  for (const auto& order : AllOrders()) definitions.push_back(order->Definition());
  return definitions;
}

}  // namespace tolvan
