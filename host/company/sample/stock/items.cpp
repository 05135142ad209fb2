#include "host/company/sample/stock/items.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/company/sample/accounts.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

namespace {

using QuorDataLib::Value;

constexpr Currency hundredths(std::int64_t count) { return Currency::fromUnits(count * 100); }

constexpr std::array<SampleItem, 36> kGoods{{
    {1, "VIS-0875", "Vis à bois no 8 x 3/4 po, boîte de 100", "boîte", 649, 310, 60},
    {2, "VIS-1015", "Wood screws #10 x 1-1/2 in, box of 100", "box", 899, 425, 60},
    {3, "CLOU-300", "Clous ordinaires 3 po, 5 kg", "kg", 2195, 1140, 30},
    {4, "BOLT-38", "Hex bolts 3/8 in, zinc, box of 50", "box", 1875, 905, 40},
    {5, "ANCR-14", "Ancrages à manchon 1/4 po, boîte de 50", "boîte", 2450, 1210, 25},
    {6, "GLU-PL", "Construction adhesive, 295 ml", "tube", 5990, 290, 4, "case", hundredths(1200)},
    {7, "SCEL-SIL", "Scellant silicone, 300 ml", "tube", 849, 410, 48},
    {8, "PAINT-W4", "Interior latex paint, white, 3.78 L", "can", 4299, 2260, 20},
    {9, "PEINT-E4", "Peinture extérieure, base, 3,78 L", "can", 5199, 2790, 16},
    {10, "ROUL-KIT", "Trousse de rouleaux 9 po", "kit", 1599, 720, 24, "kit", Currency()},
    {11, "PLY-12", "Plywood 1/2 in, 4 x 8 ft", "sheet", 4875, 3290, 40},
    {12, "PLY-58", "Contreplaqué 5/8 po, 4 x 8 pi", "sheet", 5995, 4080, 40},
    {13, "GYPS-12", "Panneau de gypse 1/2 po, 4 x 8 pi", "sheet", 1985, 1240, 80},
    {14, "STUD-248", "Spruce stud 2 x 4 x 8 ft", "pc", 449, 285, 200},
    {15, "STUD-268", "Colombage 2 x 6 x 8 pi", "pc", 745, 498, 160},
    {16, "CEDR-68", "Cedar decking 5/4 x 6 x 8 ft", "pc", 2150, 1390, 90},
    {17, "INSUL-R20", "Mineral wool insulation R-20", "bag", 6899, 4550, 30},
    {18, "MEMB-10", "Membrane de toiture, rouleau 10 m", "roll", 8950, 5900, 20},
    {19, "BARD-ARC", "Bardeaux architecturaux, paquet", "pack", 3899, 2610, 90},
    {20, "DOOR-32", "Steel entry door 32 in", "pc", 38900, 24750, 4},
    {21, "FEN-2436", "Fenêtre à battant 24 x 36 po", "pc", 31950, 20100, 8},
    {22, "LOCK-DB", "Deadbolt lock, satin nickel", "pc", 5495, 2880, 15},
    {23, "ROB-CUIS", "Robinet de cuisine, chrome", "pc", 18995, 10950, 6},
    {24, "PEX-100", "PEX pipe 1/2 in, 100 ft", "roll", 2725, 3120, 24, "50 ft", hundredths(50)},
    {25, "CUIV-12", "Tuyau de cuivre 1/2 po x 12 pi", "pc", 3475, 2490, 30},
    {26, "CHAUF-60", "Chauffe-eau électrique 60 gal", "pc", 74900, 52300, 3},
    {27, "WIRE-142", "NMD90 cable 14/2, 75 m", "roll", 11250, 7480, 12},
    {28, "PRISE-15", "Prise double 15 A, boîte de 10", "box", 1995, 940, 25},
    {29, "LED-6", "Recessed LED light 6 in", "pc", 2899, 1480, 40},
    {30, "BREAK-15", "Circuit breaker 15 A", "pc", 1249, 640, 30},
    {31, "PERC-18V", "Perceuse sans fil 18 V", "kit", 22995, 14600, 4},
    {32, "SAW-714", "Circular saw 7-1/4 in", "pc", 15995, 9850, 4},
    {33, "ECHEL-24", "Échelle à coulisse 24 pi", "pc", 34900, 22100, 3},
    {34, "GLOVE-L", "Work gloves, large, dozen", "dz", 3995, 1890, 15},
    {35, "BACHE-20", "Bâche renforcée 20 x 30 pi", "pc", 8495, 4460, 10},
    {36, "GEN-5500", "Portable generator 5500 W", "pc", 109900, 76500, 2},
}};

constexpr std::array<SampleItem, 4> kServices{{
    {41, "INST-H", "Installation, à l'heure", "h", 9500, 0, 40},
    {42, "DESIGN-H", "Design and drawings, by the hour", "h", 12500, 0, 30},
    {43, "GEST-H", "Gestion de chantier, à l'heure", "h", 11000, 0, 60},
    {44, "DELIV-H", "Crane truck with driver, by the hour", "h", 16500, 0, 12},
}};

constexpr std::array<SampleItem, 3> kSubcontracts{{
    {51, "ST-ELEC", "Sous-traitance, électricien", "h", 0, 8800, 60},
    {52, "ST-PLUMB", "Subcontracted plumber", "h", 0, 9200, 60},
    {53, "ST-CHARP", "Sous-traitance, charpentier", "h", 0, 7400, 80},
}};

/// Made of stocked goods and kept in stock.
constexpr std::array<SampleItem, 2> kAssembled{{
    {61, "MUR-48", "Panneau de mur préfabriqué, 4 x 8 pi", "pc", 18900, 0, 3},
    {62, "MUR-DOOR", "Prefabricated wall panel with door", "pc", 72900, 0, 1},
}};

/// Sold as one, and kept as their components.
constexpr std::array<SampleItem, 4> kKits{{
    {71, "KIT-PEINT", "Trousse de peinture, une pièce", "kit", 9990, 0, 4},
    {72, "KIT-DOOR", "Entry door with lock, installed", "kit", 62900, 0, 2},
    {73, "KIT-PLOMB", "Trousse de plomberie, cuisine", "kit", 24500, 0, 3},
    {74, "KIT-STORM", "Storm kit: tarp and ties", "kit", 9900, 0, 1},
}};

/// Bought by nobody yet: a component without stock, and never a movement.
constexpr SampleItem kNeverStocked{37,   "TIES-50", "Tie-down straps, set of 50", "set", 2495,
                                   1100, 1};

constexpr std::array<SampleComponent, 15> kComponents{{
    {61, 3, hundredths(25)},
    {61, 11, hundredths(200)},
    {61, 14, hundredths(900)},
    {62, 20, hundredths(100)},
    {62, 61, hundredths(100)},
    {71, 7, hundredths(100)},
    {71, 8, hundredths(200)},
    {71, 10, hundredths(100)},
    {72, 20, hundredths(100)},
    {72, 22, hundredths(100)},
    {72, 41, hundredths(200)},
    {73, 23, hundredths(100)},
    {73, 24, hundredths(150)},
    {74, 35, hundredths(100)},
    {74, kNeverStocked.id, hundredths(100)},
}};

/// An item, and one that can replace it.
constexpr std::array<std::pair<std::int32_t, std::int32_t>, 7> kReplacements{
    {{1, 2}, {2, 1}, {11, 12}, {12, 11}, {12, 13}, {14, 15}, {20, 62}}};

/// What kind of item it is.
enum class Kind : std::uint8_t { Goods, Service, Assembled, Kit };

void writeItem(Table& table, const SampleItem& item, Kind kind) {
  const bool service = kind == Kind::Service;
  table.add({item.id, item.code, item.description, service, item.unit,
             item.saleUnit == nullptr ? item.unit : item.saleUnit, item.factor, money(item.price),
             service ? Value(Currency::fromInteger(1)) : Value::null(), item.saleUnit != nullptr,
             kind == Kind::Kit, kind == Kind::Assembled,
             service ? Acct::kServiceSales : Acct::kSales,
             service ? Acct::kSubcontractors : Acct::kPurchases, Value::null(),
             service || kind == Kind::Kit ? Value::null() : Value(Acct::kInventory)});
}

}  // namespace

void writeItems(Store& store) {
  Table table(store, "Item",
              {"InItemId", "ItemId", "Descr1", "Servc", "StockUnit", "SaleUnit", "FacSales",
               "Price1", "Hours", "ChkQtyWithBarCode", "IsKit", "IsAssembly", "ExSaleAcctId",
               "ExPurcAcctId", "ExDiscSalesAcctId", "ExInvAcctId"});
  for (const SampleItem& item : kGoods) writeItem(table, item, Kind::Goods);
  writeItem(table, kNeverStocked, Kind::Goods);
  for (const SampleItem& item : kServices) writeItem(table, item, Kind::Service);
  for (const SampleItem& item : kSubcontracts) writeItem(table, item, Kind::Service);
  for (const SampleItem& item : kAssembled) writeItem(table, item, Kind::Assembled);
  for (const SampleItem& item : kKits) writeItem(table, item, Kind::Kit);

  Table components(store, "ItemKitDet", {"ExItemKitId", "ExItemId", "Qty"});
  for (const SampleComponent& each : kComponents) {
    components.add({each.of, each.item, each.quantity});
  }
  Table replacements(store, "ItemReplacement", {"ExId", "ExItemId"});
  for (const auto& [item, other] : kReplacements) replacements.add({item, other});
}

std::span<const SampleItem> stockedGoods() { return kGoods; }
std::span<const SampleItem> assembledGoods() { return kAssembled; }

std::span<const SampleComponent> componentsOf(std::int32_t item) {
  const auto [first, last] = std::ranges::equal_range(kComponents, item, {}, &SampleComponent::of);
  return {first, last};
}

const SampleItem* stockedItem(std::int32_t id) {
  for (const std::span<const SampleItem> list : {stockedGoods(), assembledGoods()}) {
    const auto found = std::ranges::find(list, id, &SampleItem::id);
    if (found != list.end()) return &*found;
  }
  return nullptr;
}

const SampleItem& pickGoods(Random& random) {
  constexpr std::int32_t kKitsPerMille = 40;
  constexpr std::int32_t kAssembledPerMille = 20;
  const std::int32_t chance = random.below(1000);
  if (chance < kKitsPerMille) return random.pick(std::span(kKits));
  if (chance < kKitsPerMille + kAssembledPerMille) return random.pick(std::span(kAssembled));
  return random.pick(std::span(kGoods));
}
const SampleItem& pickService(Random& random) { return random.pick(std::span(kServices)); }
const SampleItem& pickSubcontract(Random& random) { return random.pick(std::span(kSubcontracts)); }

}  // namespace QuorHost::Sample
