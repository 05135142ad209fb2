#include "host/company/sample/directory.h"

#include <array>
#include <cctype>

#include "host/company/sample/accounts.h"
#include "host/company/sample/money.h"

namespace QuorHost::Sample {

namespace {

using Words = std::span<const char* const>;

constexpr std::int32_t kQuebecRate = 9'975;

const std::vector<Region>& canadianRegions() {
  static const std::vector<Region> regions = {
      {1,
       "Québec",
       1,
       true,
       1,
       5'000,
       kQuebecRate,
       Acct::kQuebecTax,
       420,
       {{"Montréal", "514", "H2X"},
        {"Québec", "418", "G1R"},
        {"Laval", "450", "H7N"},
        {"Gatineau", "819", "J8X"},
        {"Longueuil", "450", "J4K"},
        {"Sherbrooke", "819", "J1H"},
        {"Saguenay", "418", "G7H"},
        {"Lévis", "418", "G6V"},
        {"Trois-Rivières", "819", "G9A"},
        {"Saint-Jérôme", "450", "J7Z"},
        {"Rimouski", "418", "G5L"}}},
      {2,
       "Ontario",
       1,
       false,
       2,
       13'000,
       0,
       0,
       270,
       {{"Toronto", "416", "M5V"},
        {"Ottawa", "613", "K1P"},
        {"Mississauga", "905", "L5B"},
        {"Hamilton", "905", "L8P"},
        {"London", "519", "N6A"},
        {"Kingston", "613", "K7L"},
        {"Windsor", "519", "N9A"},
        {"Sudbury", "705", "P3E"}}},
      {3,
       "British Columbia",
       1,
       false,
       3,
       5'000,
       7'000,
       Acct::kProvincialTax,
       90,
       {{"Vancouver", "604", "V6B"},
        {"Victoria", "250", "V8W"},
        {"Burnaby", "604", "V5H"},
        {"Kelowna", "250", "V1Y"}}},
      {4,
       "Alberta",
       1,
       false,
       3,
       5'000,
       0,
       0,
       80,
       {{"Calgary", "403", "T2P"}, {"Edmonton", "780", "T5J"}, {"Red Deer", "403", "T4N"}}},
      {5,
       "Nouveau-Brunswick",
       1,
       true,
       1,
       15'000,
       0,
       0,
       35,
       {{"Moncton", "506", "E1C"}, {"Dieppe", "506", "E1A"}, {"Edmundston", "506", "E3V"}}},
      {6,
       "Nova Scotia",
       1,
       false,
       2,
       15'000,
       0,
       0,
       35,
       {{"Halifax", "902", "B3J"}, {"Dartmouth", "902", "B2Y"}, {"Truro", "902", "B2N"}}},
      {7,
       "Manitoba",
       1,
       false,
       3,
       5'000,
       7'000,
       Acct::kProvincialTax,
       30,
       {{"Winnipeg", "204", "R3C"}, {"Brandon", "204", "R7A"}}},
      {8,
       "Saskatchewan",
       1,
       false,
       3,
       5'000,
       6'000,
       Acct::kProvincialTax,
       20,
       {{"Regina", "306", "S4P"}, {"Saskatoon", "306", "S7K"}}},
      {9,
       "Newfoundland and Labrador",
       1,
       false,
       2,
       15'000,
       0,
       0,
       10,
       {{"St. John's", "709", "A1C"}, {"Corner Brook", "709", "A2H"}}},
      {10,
       "Prince Edward Island",
       1,
       false,
       2,
       15'000,
       0,
       0,
       10,
       {{"Charlottetown", "902", "C1A"}, {"Summerside", "902", "C1N"}}},
  };
  return regions;
}

const std::vector<Region>& americanRegions() {
  static const std::vector<Region> regions = {
      {11,
       "New York",
       2,
       false,
       4,
       0,
       0,
       0,
       350,
       {{"Plattsburgh", "518", "129"}, {"Albany", "518", "122"}, {"Buffalo", "716", "142"}}},
      {12,
       "Vermont",
       2,
       false,
       4,
       0,
       0,
       0,
       250,
       {{"Burlington", "802", "054"}, {"Montpelier", "802", "056"}}},
      {13, "Massachusetts", 2, false, 4, 0, 0, 0, 200, {{"Boston", "617", "021"}}},
      {14, "Michigan", 2, false, 4, 0, 0, 0, 200, {{"Detroit", "313", "482"}}},
  };
  return regions;
}

const std::vector<Region>& europeanRegions() {
  static const std::vector<Region> regions = {
      {15,
       "France",
       3,
       true,
       4,
       0,
       0,
       0,
       550,
       {{"Paris", "33", "750"}, {"Lyon", "33", "690"}, {"Besançon", "33", "250"}}},
      {16, "Belgique", 4, true, 4, 0, 0, 0, 250, {{"Liège", "32", "40"}, {"Namur", "32", "50"}}},
      {17,
       "Deutschland",
       5,
       false,
       4,
       0,
       0,
       0,
       200,
       {{"Köln", "49", "506"}, {"München", "49", "803"}}},
  };
  return regions;
}

constexpr std::array<const char*, 44> kFrenchSurnames = {
    "Tremblay",   "Gagnon",   "Roy",      "Côté",    "Bouchard",  "Gauthier",   "Morin",
    "Lavoie",     "Fortin",   "Gagné",    "Ouellet", "Pelletier", "Bélanger",   "Lévesque",
    "Bergeron",   "Leblanc",  "Paquette", "Girard",  "Simard",    "Boucher",    "Caron",
    "Beaulieu",   "Cloutier", "Dubé",     "Poirier", "Fournier",  "Lapointe",   "Leclerc",
    "Lefebvre",   "Poulin",   "Thibault", "Nadeau",  "Hébert",    "Desjardins", "Grenier",
    "Rousseau",   "Bédard",   "Théberge", "Légaré",  "Émond",     "Éthier",     "Saint-Pierre",
    "Beauséjour", "Noël"};
constexpr std::array<const char*, 44> kEnglishSurnames = {
    "Smith",    "Brown",   "Campbell", "MacDonald", "Wilson", "Johnson",  "Taylor", "Anderson",
    "Thompson", "Stewart", "Murphy",   "Robinson",  "Walker", "Clark",    "Fraser", "Reid",
    "Morrison", "O'Brien", "Kennedy",  "Mitchell",  "Graham", "Hughes",   "Ross",   "Hamilton",
    "Grant",    "Wallace", "Cameron",  "Douglas",   "Chen",   "Singh",    "Patel",  "Nguyen",
    "Kowalski", "Schmidt", "Romano",   "Friesen",   "Penner", "Sinclair", "McLeod", "Pelletier",
    "Baker",    "Cooper",  "Fisher",   "Young"};
constexpr std::array<const char*, 20> kFrenchFirstNames = {
    "Marie",   "Josée",     "Sylvie", "Hélène",   "Chantal", "Geneviève", "Isabelle",
    "Mélanie", "Françoise", "Noémie", "André",    "Benoît",  "François",  "Jérôme",
    "Luc",     "Mathieu",   "Michel", "Stéphane", "Étienne", "Réjean"};
constexpr std::array<const char*, 20> kEnglishFirstNames = {
    "Anne",  "Catherine", "Deborah", "Emily",  "Heather", "Jennifer", "Karen",
    "Megan", "Susan",     "Priya",   "Brian",  "Craig",   "Daniel",   "Gordon",
    "Ian",   "James",     "Kevin",   "Robert", "Stephen", "Wei"};
constexpr std::array<const char*, 22> kFrenchTrades = {"Quincaillerie",
                                                       "Rénovations",
                                                       "Construction",
                                                       "Ébénisterie",
                                                       "Menuiserie",
                                                       "Plomberie",
                                                       "Électricité",
                                                       "Matériaux",
                                                       "Équipements",
                                                       "Toitures",
                                                       "Ferronnerie",
                                                       "Paysagement",
                                                       "Atelier",
                                                       "Fournitures",
                                                       "Portes et fenêtres",
                                                       "Entrepôts",
                                                       "Distributions",
                                                       "Les Entreprises",
                                                       "Coopérative agricole",
                                                       "Chauffage",
                                                       "Peintures",
                                                       "Béton"};
constexpr std::array<const char*, 22> kEnglishTrades = {
    "Hardware",    "Building Supply", "Contracting",  "Woodworking",  "Plumbing",
    "Electric",    "Mechanical",      "Roofing",      "Landscaping",  "Millwork",
    "Fabricating", "Industrial",      "Tool & Die",   "Home Centre",  "Paint & Glass",
    "Fasteners",   "Farm Supply",     "Distributors", "Construction", "Heating",
    "Equipment",   "Interiors"};
constexpr std::array<const char*, 18> kFrenchStreets = {
    "rue Sainte-Catherine", "boul. Saint-Laurent", "rue de l'Église", "av. du Parc",
    "rue Principale",       "ch. des Érables",     "rue Notre-Dame",  "boul. René-Lévesque",
    "rue Saint-Jean",       "rang Double",         "rue du Collège",  "av. Cartier",
    "rue de la Gare",       "boul. Industriel",    "rue King Ouest",  "ch. Sainte-Foy",
    "rue des Pionniers",    "côte d'Abraham"};
constexpr std::array<const char*, 18> kEnglishStreets = {
    "King St. W",      "Queen St. E",      "Main St.",      "Yonge St.",    "Portage Ave.",
    "Barrington St.",  "Jasper Ave.",      "Granville St.", "Bank St.",     "Industrial Rd.",
    "Highway 7",       "Concession Rd. 4", "Water St.",     "Commerce Way", "Mill Rd.",
    "Lakeshore Blvd.", "Airport Rd.",      "Victoria St."};
constexpr std::array<const char*, 5> kFrenchTitles = {
    "Comptes fournisseurs", "Directrice des finances", "Contrôleur", "Propriétaire", "Acheteur"};
constexpr std::array<const char*, 5> kEnglishTitles = {"Accounts Payable", "Controller", "Owner",
                                                       "Purchasing", "Office Manager"};

std::string digits(Random& random, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += static_cast<char>('0' + random.below(10));
  return text;
}

/// The plain letter under an accent of Latin letters, given the second byte after 0xC3.
char plainLetter(unsigned char second) {
  constexpr std::string_view kPlain =
      "AAAAAAACEEEEIIIIDNOOOOOxOUUUUYTsaaaaaaaceeeeiiiidnooooo/ouuuuyty";
  return kPlain[second & 0x3FU];
}

/// `text` without accents and without anything that is no letter or digit.
std::string fold(std::string_view text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte == 0xC3 && i + 1 < text.size()) {
      plain += plainLetter(static_cast<unsigned char>(text[++i]));
    } else if (byte < 0x80 && std::isalnum(byte) != 0) {
      plain += text[i];
    }
  }
  return plain;
}

std::string lowerCase(std::string text) {
  for (char& letter : text)
    letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
  return text;
}

std::string telephone(Random& random, const City& city) {
  return std::string(city.areaCode) + " 555-" + digits(random, 4);
}

std::string postalCode(Random& random, const Region& region, const City& city) {
  const std::string prefix = city.postalPrefix;
  if (region.country != 1) return prefix + digits(random, 5 - static_cast<int>(prefix.size()));
  constexpr std::string_view kLetters = "ABCEGHJKLMNPRSTVWXYZ";
  std::string code = prefix + " ";
  code += digits(random, 1);
  code += random.pick(std::span(kLetters));
  code += digits(random, 1);
  return code;
}

std::string businessName(Random& random, bool french) {
  const std::string surname =
      french ? random.pick(Words(kFrenchSurnames)) : random.pick(Words(kEnglishSurnames));
  const std::string trade =
      french ? random.pick(Words(kFrenchTrades)) : random.pick(Words(kEnglishTrades));
  switch (random.below(5)) {
    case 0: {
      const std::string partner =
          french ? random.pick(Words(kFrenchSurnames)) : random.pick(Words(kEnglishSurnames));
      return french ? trade + " " + surname + " et " + partner + " inc."
                    : surname + " & " + partner + " " + trade + " Ltd.";
    }
    case 1:
      return french ? trade + " " + surname + " et fils ltée"
                    : surname + " Bros. " + trade + " Inc.";
    case 2:
      return french ? trade + " " + surname : surname + " " + trade + " Co.";
    default:
      return french ? trade + " " + surname + " inc." : surname + " " + trade + " Ltd.";
  }
}

}  // namespace

const Region& pickRegion(Random& random, std::int32_t currencyId) {
  const std::vector<Region>& regions = currencyId == kDollar ? americanRegions()
                                       : currencyId == kEuro ? europeanRegions()
                                                             : canadianRegions();
  std::int32_t left = random.below(1000);
  for (const Region& region : regions) {
    left -= region.frequency;
    if (left < 0) return region;
  }
  return regions.back();
}

std::string makePerson(Random& random, bool french) {
  const std::string first =
      french ? random.pick(Words(kFrenchFirstNames)) : random.pick(Words(kEnglishFirstNames));
  return first + " " +
         (french ? random.pick(Words(kFrenchSurnames)) : random.pick(Words(kEnglishSurnames)));
}

Identity makeIdentity(Random& random, const Region& region) {
  // Some firms of Montréal and Moncton do business in English, some of Ottawa in French.
  const bool french = random.chance(150) && region.country == 1 ? !region.french : region.french;
  const City& city = random.pick(std::span(region.cities));
  Identity who;
  who.french = french;
  who.name = businessName(random, french);
  who.contact = makePerson(random, french);
  who.contactTitle =
      french ? random.pick(Words(kFrenchTitles)) : random.pick(Words(kEnglishTitles));
  who.telephone = telephone(random, city);
  who.fax = random.chance(400) ? telephone(random, city) : "";
  const std::string domain = lowerCase(fold(who.name)) + ".example";
  who.email = (french ? "comptes@" : "accounts@") + domain;
  who.web = "www." + domain;
  const std::string number = std::to_string(random.between(1, 9899));
  who.address = number + (region.french ? std::string(", ") + random.pick(Words(kFrenchStreets))
                                        : std::string(" ") + random.pick(Words(kEnglishStreets)));
  if (random.chance(250)) {
    who.address2 = (french ? "bureau " : "Suite ") + std::to_string(random.between(100, 990));
  }
  who.city = city.name;
  who.postalCode = postalCode(random, region, city);
  return who;
}

std::string partyCode(std::string_view name, std::int32_t id) {
  std::string code = fold(name).substr(0, 4);
  for (char& letter : code)
    letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
  const std::string number = std::to_string(id);
  return code + std::string(number.size() < 4 ? 4 - number.size() : 0, '0') + number;
}

}  // namespace QuorHost::Sample
