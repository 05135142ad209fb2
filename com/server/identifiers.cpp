#include "com/server/identifiers.h"

#include <algorithm>
#include <array>

#include "platform/error.h"

namespace QuorCom {
namespace {

/// The identifiers of a class and of its interface; those without a class name are of the type
/// library and of the interface by which the DLL knows its own objects.
struct Identifiers {
  std::string_view library;
  std::string_view className;
  std::string_view main;
  std::string_view second;
};

constexpr std::array kIdentifiers{
    Identifiers{"QuorAccQueries", "", "CA71C682-1DDD-441C-A3AB-CD163E5EA7F2",
                "BB73A183-88F3-46A9-990A-1C2A21ACA4B8"},
    Identifiers{"QuorAccQueries", "CQueries", "B390A48F-0014-4C45-9578-B2CB17648C1E",
                "ACE947F6-3EA6-4C66-B57E-5EAE23E8491F"},
    Identifiers{"QuorAccQueries", "CCustomerQueries", "719B6CD1-F45E-4ACB-BBF8-5EF0865F66D8",
                "C73CA939-E0C9-42A5-9C16-A67C0D263398"},
    Identifiers{"QuorAccQueries", "CCustomerHelper", "54C3D10B-6DBA-49D9-9657-EB1F4E2CB004",
                "0AB78BE1-B2B1-4ED1-AB91-DC5A81D1DD1C"},
    Identifiers{"QuorAccQueries", "CSupplierQueries", "41E4C631-D2B1-45AF-9788-04285E93597E",
                "741BEFBD-DBF7-45B5-8FD6-FC3F0405FED0"},
    Identifiers{"QuorAccQueries", "CSupplierHelper", "1B913B6A-BCED-4B05-A343-429E15F7C97B",
                "19582E4A-EB89-498D-BD04-03752100434F"},
    Identifiers{"QuorAccQueries", "CInventoryQueries", "BB822BFA-5454-4C06-AC35-3EDFCBE0AFFD",
                "E45DA565-2ED0-4FE1-BC2E-DF659F85EC06"},
    Identifiers{"QuorAccQueries", "CInventoryHelper", "B908321D-9895-4353-B94B-BCA708AA382A",
                "ACC5C77B-DFF1-4F68-8627-600EBFB70257"},
    Identifiers{"QuorAccQueries", "CGeneralLedgerQueries", "6FE04D70-3BE2-4818-822D-FEC4C4BE65C5",
                "4DC2B138-325F-46E7-ABFB-68BA2BB675E3"},
    Identifiers{"QuorAccQueries", "CGeneralLedgerHelper", "A33A7343-1F54-4623-A933-4F9D2FDFF350",
                "8D8937ED-7F60-462F-83A4-FA3E8DEC844C"},
    Identifiers{"QuorAccQueries", "CProjectQueries", "D508106A-ACD6-4D7C-84EF-F1ACCFC0482E",
                "9E9160F2-AD82-4C81-8504-C9139242E251"},
    Identifiers{"QuorAccQueries", "CProjectHelper", "E67D61B9-57E3-4867-B6EE-688EB1A6AC9B",
                "AA6B71AA-B527-406B-BCE0-8563096A924A"},
    Identifiers{"QuorAccQueries", "CTermHelper", "D65ACC0E-C1B3-4935-887E-48187CC7A734",
                "DFBFCE6C-2100-4EEA-B1AA-37FF4F48ECF9"},
    Identifiers{"QuorAccQueries", "CTrxRecHelper", "A23E41FA-59CC-4829-BF07-415F6A7786CF",
                "38A5F170-44E8-47C7-9C63-41B6085EBCF5"},
    Identifiers{"QuorAccQueries", "CEmployeeQueries", "5B83E0C3-67E9-4721-9CDA-4BD17C39C0E9",
                "E4A694C7-B2FF-40DC-B238-E5D741CCE569"},
    Identifiers{"QuorAccQueries", "CEmployeeHelper", "A9AA9D2F-8A22-4971-9844-F384591E087D",
                "1A259E0A-7256-4B2B-80E0-48E0FF6A0659"},
    Identifiers{"QuorAccQueries", "CTaxHelper", "37CE65B1-78A5-4B11-B83E-35AAB1C420E6",
                "33A88706-D6D9-4EF7-BF86-DEA46FEFC4A4"},
    Identifiers{"QuorAccQueries", "CCountryHelper", "7460D698-CEA3-4618-A4FC-861229794D1E",
                "BDB48D57-9AA9-4EA4-87A2-B40C0123C73A"},
    Identifiers{"QuorAccQueries", "CCustPmtInfo", "C31DD33B-8A7E-4B10-9871-7D18F7820E23",
                "3B4B468F-FD44-4000-ABF1-DA51F29C9195"},
    Identifiers{"QuorAccQueries", "CCustSaleInfo", "1AE9FF68-1F1C-47A8-85C6-0683E40F26B8",
                "23399B26-5711-4E85-91B7-B8E6D6B225BF"},
    Identifiers{"QuorAccQueries", "CSupplierPmtInfo", "6B30A58C-F6F2-47F9-9143-B00B65778F2F",
                "7672A8A6-916A-4496-9572-64B8422C0DF3"},
    Identifiers{"QuorAccQueries", "CSupplierPurcInfo", "0E68A1E7-4F6C-45E1-AB2A-ABD979DE327C",
                "BF5DAB21-FB5C-47E7-B453-39422CDBE352"},
    Identifiers{"QuorAccQueries", "CKitComponent", "1D474E45-CDCC-46E7-A568-ED9D78230112",
                "E233F0DB-660A-4E8E-B535-DF636D474D72"},
    Identifiers{"QuorAccQueries", "CThreadHost", "3507630D-D513-4FA5-A820-C421CAE5C8C4",
                "C71B3323-66E1-4191-AAC7-AF53352EB942"},
    Identifiers{"QuorAccQueries", "Collection", "BD1E7579-FFD9-4814-B376-38A6CAB83D33",
                "E580404E-AAC8-4850-AA20-750BAB34B0F1"},
    Identifiers{"QuorDataLib", "", "8B6011B2-22A1-4FE2-83B9-807D5ADC2CED",
                "B7B7E06D-71D6-4F49-B9DC-E461BFF356F2"},
    Identifiers{"QuorDataLib", "Application", "2AB653A3-199D-409C-8488-9255A1BBE811",
                "A3E54C44-54ED-40A6-AEE9-33F39CF43058"},
    Identifiers{"QuorDataLib", "ApplicationContext", "6E283E89-CFD3-48C6-9BDE-F0D580173040",
                "6EAF1922-6F72-49D4-B4A7-DEE8C69CF650"},
    Identifiers{"QuorDataLib", "DataServices", "1BAF7891-4974-4F22-96AD-15FE1EDE222E",
                "B406D31B-9764-463D-B129-2A63191F984D"},
    Identifiers{"QuorDataLib", "Connection", "2F366487-FD7E-4DE7-BE4E-514D672CBA63",
                "971517DB-882E-4CF2-8938-D1D4B5A2FA83"},
    Identifiers{"QuorDataLib", "Recordset", "492E1BAB-F153-4DE7-8864-56F4C6045296",
                "17F082BF-48C5-4730-AB08-2052EA9379C9"},
    Identifiers{"QuorDataLib", "ErrorService", "31682BA1-E9DB-402E-A9F3-B7B380BF2D63",
                "2FFF32F5-19A6-4720-A899-57780D8B1939"},
    Identifiers{"QuorDataLib", "ObjectRegistry", "7127F16F-C680-4D0A-8096-EB813BB143B1",
                "85EF3AA0-F279-4EBF-8CDC-645595E4783F"},
    Identifiers{"QuorDataLib", "ObjectFactory", "2FAB54A4-A340-4AC4-9F63-DCFAE6613ACF",
                "6F550B70-B241-4942-94A5-64FF6FD9F27D"},
    Identifiers{"QuorDataLib", "SettingsReader", "5867C6FD-0704-4CC2-A131-2679113B9C74",
                "F59FA662-03F1-4FC3-9A60-DF695A1853F7"},
    Identifiers{"QuorDataLib", "Utility", "BE3D074C-11CF-44BA-985F-7AC5722093A9",
                "84843D01-5FC2-4622-B71C-6708BE1ADAA9"},
    Identifiers{"QuorDataLib", "CCastriaHelper", "B263721F-D84F-43EA-9C2C-B6C976BD8A53",
                "4D2DC41D-3ED8-4621-B4F5-E5B3A32B62CE"},
    Identifiers{"QuorDataLib", "CastriaApplication", "35319A47-D023-4A69-80BE-F8F2ABC3937B",
                "9EA6B5B8-791D-466E-B72B-6534F1C201D1"},
    Identifiers{"QuorDataLib", "Company", "55812079-A52E-4883-BE82-9EAB1D94ABFE",
                "9DCFEE02-320C-4A6C-9311-8E405B4E5F9B"},
    Identifiers{"QuorDataLib", "CurrencyInfo", "A8E1820C-1878-49C4-B1A1-744CFCBD330E",
                "C1D723AD-43E1-4976-BDA6-AFC5BCE5DD9F"},
    Identifiers{"QuorDataLib", "Settings", "84A7696C-863B-4AAF-8D1D-12570133153F",
                "FB9DEE01-3481-4F74-A28A-1C69AFE6F024"},
    Identifiers{"QuorDataLib", "Declares", "80208E6D-9C46-4761-B8D1-C04312CAAB5F",
                "38E86486-4533-4BBA-B277-B3BB7F97FA59"},
    Identifiers{"QuorDataLib", "Collection", "731EE54D-8DCB-4584-B0FB-A2013B2CA025",
                "92B14BDF-EDFF-4C8B-A2A9-715E0AAC1AF1"},
};

const Identifiers& find(std::string_view library, std::string_view className) {
  const auto* const found = std::ranges::find_if(kIdentifiers, [&](const Identifiers& each) {
    return each.library == library && each.className == className;
  });
  if (found == kIdentifiers.end()) {
    QuorDataLib::raise(QuorDataLib::ErrorNumber::InternalError,
                       "com/server/identifiers.cpp has no identifiers of " + std::string(library) +
                           "." + std::string(className) + ": add a line at its end");
  }
  return *found;
}

}  // namespace

std::string_view libraryId(std::string_view library) { return find(library, "").main; }

std::string_view ownInterfaceId(std::string_view library) { return find(library, "").second; }

std::string_view classId(std::string_view library, std::string_view className) {
  return find(library, className).main;
}

std::string_view interfaceId(std::string_view library, std::string_view className) {
  return find(library, className).second;
}

}  // namespace QuorCom
