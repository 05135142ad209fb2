#include <filesystem>
#include <memory>
#include <string>

#include "bench/by_hand.h"
#include "bench/cases.h"
#include "host/company/company.h"
#include "host/company/stock/recost.h"
#include "inventory/inventory_helper.h"
#include "inventory/inventory_queries.h"

namespace QuorBench {
namespace {

using QuorAccQueries::CInventoryHelper;
using QuorAccQueries::CInventoryQueries;
using QuorDataLib::Currency;
using QuorDataLib::Date;

constexpr std::int32_t kMovements = 1'000'000;

/// A company of a million movements: one item has half of them, the others are spread over 500
/// items; five types, two warehouses, three projects, three segments; a hundredth of the movements
/// are receptions not invoiced.
class StockCompany {
 public:
  explicit StockCompany(const std::string& folder)
      : path_(folder + "/stock-" + std::to_string(QuorHost::kNewestSchemaVersion) + ".db") {
    if (!std::filesystem::exists(path_)) make();
    company_ = std::make_shared<Company>(path_);
  }

  [[nodiscard]] const std::shared_ptr<Company>& company() const { return company_; }
  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  void make() const {
    std::filesystem::create_directories(std::filesystem::path(path_).parent_path());
    const std::string unfinished = path_ + ".unfinished";
    std::filesystem::remove(unfinished);
    QuorHost::createCompany(unfinished, {});
    {
      const auto store = QuorHost::openCompany(unfinished, QuorHost::Access::Write);
      const auto transaction = store->begin();
      const auto items = store->writer("Item", {"InItemId", "ItemId", "Servc"});
      for (std::int32_t item = 1; item <= 501; ++item) {
        const QuorDataLib::Value row[] = {item, "I" + std::to_string(item), false};
        items->add(row);
      }
      const auto rows = store->writer(
          "InvenDet", {"ExItemId", "DetDate", "Type", "SeqNo", "ExSrcKeyVal", "ExDetId", "Qty",
                       "Cost", "Invoiced", "ExWarehouseId", "ExProjId", "ExSegmentId"});
      constexpr std::int32_t kTypes[] = {1, 7, 7, 2, 7, 1, 7, 6, 7, 1};
      for (std::int32_t i = 0; i < kMovements; ++i) {
        const std::int32_t type = kTypes[i % 10];
        const std::int64_t quantity = type == 7 ? -10'000 * (1 + i % 5) : 10'000 * (1 + i % 9);
        const QuorDataLib::Value row[] = {
            i % 2 == 0 ? 1 : 2 + i / 2 % 500,
            Date::of(2015, 1, 1).addDays(i / 300),
            type,
            i,
            i,
            i,
            Currency::fromUnits(quantity),
            Currency::fromUnits(50'000 + i % 9'973),
            i % 100 != 0,
            1 + i % 2,
            i % 7 < 3 ? QuorDataLib::Value(1 + i % 3) : QuorDataLib::Value::null(),
            1 + i / 2 % 3};
        rows->add(row);
      }
      transaction->commit();
    }
    std::filesystem::rename(unfinished, path_);
  }

  std::string path_;
  std::shared_ptr<Company> company_;
};

/// Made and opened when the first case is set up.
std::shared_ptr<StockCompany> opened(const std::shared_ptr<std::shared_ptr<StockCompany>>& kept,
                                     const std::string& folder) {
  if (!*kept) *kept = std::make_shared<StockCompany>(folder);
  (*kept)->company()->use();
  return *kept;
}

constexpr std::int32_t kBusiest = 1;
const char* const kEnd = "9999-12-31";

Pair replay(const std::shared_ptr<StockCompany>& stock) {
  auto byHand = std::make_shared<Query>(
      stock->company()->byHand(),
      "SELECT Type, ExSrcKeyVal, ExDetId, Qty, Cost, Invoiced FROM InvenDet WHERE ExItemId = 1 "
      "AND DetDate <= '9999-12-31' ORDER BY DetDate, Type, SeqNo, InTrxId");
  return {[stock] {
            stock->company()->use();
            CInventoryHelper helper;
            if (helper.GetAvgCostRange(kBusiest, {}, 0, "", "", false).isZero()) {
              throw std::runtime_error("the replay: the item has no cost");
            }
          },
          [byHand] { byHand->copy(); }};
}

template <class Open>
Pair against(const std::shared_ptr<StockCompany>& stock, const Open& open, const std::string& sql) {
  auto byHand = std::make_shared<Query>(stock->company()->byHand(), sql);
  requireSame(read(open()), byHand->read());
  return {[stock, open] {
            stock->company()->use();
            read(open());
          },
          [byHand] { byHand->read(); }};
}

Pair onHand(const std::shared_ptr<StockCompany>& stock) {
  const Date day = Date::of(2023, 1, 1);
  return against(
      stock,
      [day] {
        return CInventoryQueries().OpenQuantityOnHandBySegmentProject(kBusiest, day, 7, 5, 5);
      },
      "SELECT sum(Qty), LC.LastCost, LC.AvgCost, ExProjId, ExSegmentId FROM (SELECT "
      "RunningLastCost AS LastCost, RunningAvgCost AS AvgCost FROM InvenDet WHERE ExItemId = 1 AND "
      "((DetDate < '2023-01-01' AND SeqNo <> 5) OR (DetDate = '2023-01-01' AND (Type < 7 OR (Type "
      "= 7 AND SeqNo < 5) OR (Type = 7 AND SeqNo = 5 AND InTrxId < 5)))) ORDER BY DetDate DESC, "
      "Type DESC, SeqNo DESC, InTrxId DESC LIMIT 1) AS LC, InvenDet WHERE ExItemId = 1 AND "
      "((DetDate < '2023-01-01' AND SeqNo <> 5) OR (DetDate = '2023-01-01' AND (Type < 7 OR (Type "
      "= 7 AND SeqNo < 5) OR (Type = 7 AND SeqNo = 5 AND InTrxId < 5)))) "
      "GROUP BY ExProjId, ExSegmentId ORDER BY ExProjId, ExSegmentId");
}

Pair itemStock(const std::shared_ptr<StockCompany>& stock) {
  return against(
      stock, [] { return CInventoryQueries().OpenQtyStock(kBusiest, 0, {}, {}, true, false, ""); },
      "SELECT ExItemId, sum(InvenDet.Qty), ExProjId, ExSegmentId, Item.Servc FROM Item JOIN "
      "InvenDet ON Item.InItemId = InvenDet.ExItemId WHERE DetDate BETWEEN '1900-01-01' AND '" +
          std::string(kEnd) +
          "' AND ExItemId = 1 GROUP BY ExItemId, ExProjId, ExSegmentId, Item.Servc");
}

Pair wholeStock(const std::shared_ptr<StockCompany>& stock) {
  return against(
      stock, [] { return CInventoryQueries().OpenQtyStock(0, 0, {}, {}, true, false, ""); },
      "SELECT ExItemId, sum(InvenDet.Qty), ExProjId, ExSegmentId, Item.Servc FROM Item JOIN "
      "InvenDet ON Item.InItemId = InvenDet.ExItemId WHERE DetDate BETWEEN '1900-01-01' AND '" +
          std::string(kEnd) + "' GROUP BY ExItemId, ExProjId, ExSegmentId, Item.Servc");
}

/// Computes all running costs of a copy of the company; the memory that it takes meanwhile, in KiB.
double recost(const std::string& path) {
  const std::string copy = path + ".copy";
  std::filesystem::copy_file(path, copy, std::filesystem::copy_options::overwrite_existing);
  double most = 0;
  {
    const auto store = QuorHost::openCompany(copy, QuorHost::Access::Write);
    const double start = memoryInUse();
    QuorHost::recostStock(*store, 0, [&](std::string_view, std::int64_t, std::int64_t) {
      most = std::max(most, memoryInUse() - start);
    });
  }
  std::filesystem::remove(copy);
  return most;
}

}  // namespace

void addInventory(Suite& suite, const std::string& folder) {
  const auto kept = std::make_shared<std::shared_ptr<StockCompany>>();
  const auto add = [&](const char* name, double goal,
                       Pair (*setUp)(const std::shared_ptr<StockCompany>&)) {
    suite.compare(name, goal, [kept, folder, setUp] { return setUp(opened(kept, folder)); });
  };
  add("replay of 500,000 movements / rows fetched by hand", 1.5, replay);
  add("stock before a position, 500,000 movements / by hand", 1.10, onHand);
  add("stock of an item by project and segment / by hand", 1.10, itemStock);
  add("stock of a company, 1,000,000 movements / by hand", 0.8, wholeStock);
  suite.limit("recosting 1,000,000 movements", 10'000, [kept, folder] {
    const auto stock = opened(kept, folder);
    return [stock] { recost(stock->path()); };
  });
  suite.figure("memory that recosting 1,000,000 movements takes", 16'384, " KiB",
               [kept, folder] { return recost(opened(kept, folder)->path()); });
}

}  // namespace QuorBench
