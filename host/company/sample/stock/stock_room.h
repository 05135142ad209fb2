// What happens in the sample's warehouses: counts, transfers, assemblies, goods used on projects.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/company/sample/calendar.h"
#include "host/company/sample/random.h"
#include "host/company/sample/stock/items.h"
#include "host/company/sample/stock/stock.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

class StockRoom {
 public:
  /// Begins with stock of all goods, contributed by the owners.
  StockRoom(Store& store, Stock& stock, std::int32_t scale, Random random);

  /// The stock units that the largest sale of an item takes, 1 or more.
  static std::int32_t largestSale(const SampleItem& item);

  /// Goods to buy: of a dozen, those that there is least of. A few items are not bought for the
  /// first months, until their stock has been below zero for a while.
  const SampleItem& wanted(Random& random, int day) const;

  /// Keeps goods that come on a day for a project, which uses some of them later.
  void keepForProject(std::int32_t project, std::int32_t item, std::int32_t quantity, int day);

  /// What happens on a day beside the trade.
  void day(int day);

 private:
  struct Use {
    std::int32_t project;
    std::int32_t item;
    Currency quantity;
  };

  void begin();
  void count(int day);
  void use(int day);
  void transfer(int day, std::int32_t to);
  void assemble(const SampleItem& item, int day);
  /// Writes a document of counts (type 2) or of goods used (0), and hands it to the stock.
  void adjust(std::int32_t type, int day, std::int32_t warehouse, std::int32_t account,
              const std::string& description, std::vector<Movement> movements);

  Stock& stock_;
  std::int32_t scale_;
  Random random_;
  Table adjustments_;
  Table adjustmentLines_;
  Table assemblies_;
  Table assemblyLines_;
  Table transfers_;
  Table transferLines_;
  std::vector<std::vector<Use>> uses_;  // by day
  std::int32_t adjustment_ = 0;
  std::int32_t adjustmentLine_ = 0;
  std::int32_t assembly_ = 0;
  std::int32_t assemblyLine_ = 0;
  std::int32_t transfer_ = 0;
  std::int32_t transferLine_ = 0;
};

}  // namespace QuorHost::Sample
