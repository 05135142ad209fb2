#include "host/company/sample/items.h"

#include <span>

#include "host/company/sample/accounts.h"
#include "host/company/table.h"

namespace QuorHost::Sample {

namespace {

using QuorDataLib::Currency;
using QuorDataLib::Value;

constexpr std::array<SampleItem, 36> kGoods{{
    {1, "VIS-0875", "Vis à bois no 8 x 3/4 po, boîte de 100", "boîte", 649, 310, 60},
    {2, "VIS-1015", "Wood screws #10 x 1-1/2 in, box of 100", "box", 899, 425, 60},
    {3, "CLOU-300", "Clous ordinaires 3 po, 5 kg", "kg", 2195, 1140, 30},
    {4, "BOLT-38", "Hex bolts 3/8 in, zinc, box of 50", "box", 1875, 905, 40},
    {5, "ANCR-14", "Ancrages à manchon 1/4 po, boîte de 50", "boîte", 2450, 1210, 25},
    {6, "GLU-PL", "Construction adhesive, 295 ml", "tube", 575, 290, 48},
    {7, "SCEL-SIL", "Scellant silicone, 300 ml", "tube", 849, 410, 48},
    {8, "PAINT-W4", "Interior latex paint, white, 3.78 L", "can", 4299, 2260, 20},
    {9, "PEINT-E4", "Peinture extérieure, base, 3,78 L", "can", 5199, 2790, 16},
    {10, "ROUL-KIT", "Trousse de rouleaux 9 po", "kit", 1599, 720, 24},
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
    {24, "PEX-100", "PEX pipe 1/2 in, 100 ft", "roll", 5250, 3120, 12},
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

void writeItem(Table& table, const SampleItem& item, bool service) {
  table.add({item.id, item.code, item.description, service, item.unit, item.unit,
             Currency::fromInteger(1), money(item.price),
             service ? Value(Currency::fromInteger(1)) : Value::null(), false,
             service ? Acct::kServiceSales : Acct::kSales,
             service ? Acct::kSubcontractors : Acct::kPurchases, Value::null(),
             service ? Value::null() : Value(Acct::kInventory)});
}

}  // namespace

void writeItems(Store& store) {
  Table table(store, "Item",
              {"InItemId", "ItemId", "Descr1", "Servc", "StockUnit", "SaleUnit", "FacSales",
               "Price1", "Hours", "ChkQtyWithBarCode", "ExSaleAcctId", "ExPurcAcctId",
               "ExDiscSalesAcctId", "ExInvAcctId"});
  for (const SampleItem& item : kGoods) writeItem(table, item, false);
  for (const SampleItem& item : kServices) writeItem(table, item, true);
  for (const SampleItem& item : kSubcontracts) writeItem(table, item, true);
}

const SampleItem& pickGoods(Random& random) { return random.pick(std::span(kGoods)); }
const SampleItem& pickService(Random& random) { return random.pick(std::span(kServices)); }
const SampleItem& pickSubcontract(Random& random) { return random.pick(std::span(kSubcontracts)); }

}  // namespace QuorHost::Sample
