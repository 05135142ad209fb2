// What clients may do, and what they may not: results, identities and counts as COM has them.
#include <gtest/gtest.h>

#include <thread>

#include "com/objects/live.h"
#include "core/fake_platform.h"

// After the rest, whose names the system's headers would meet.
#include "tests/com/client.h"

namespace {

using namespace QuorDataLib;
using namespace client;

/// An application object that calls its context by another name, which only its type tells.
class Renamed final : public IDispatch {
 public:
  explicit Renamed(ComPtr<IDispatch> application) : application_(std::move(application)) {
    ComPtr<ITypeLib> types;
    check(::LoadTypeLibEx(L"QuorDataLib.dll", REGKIND_NONE, types.put()));
    check(types->GetTypeInfoOfGuid(guidOf(interfaceId("QuorDataLib", "Application")), type_.put()));
  }

  STDMETHODIMP QueryInterface(REFIID id, void** found) override {
    *found = nullptr;
    if (id != IID_IUnknown && id != IID_IDispatch) return E_NOINTERFACE;
    *found = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 1, S_OK; }
  STDMETHODIMP GetTypeInfo(UINT /*place*/, LCID /*locale*/, ITypeInfo** info) override {
    *info = ComPtr<ITypeInfo>(type_).detach();
    return S_OK;
  }
  STDMETHODIMP GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* /*names*/, UINT /*count*/,
                             LCID /*locale*/, DISPID* numbers) override {
    return *numbers = DISPID_UNKNOWN, DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID number, REFIID reserved, LCID locale, WORD flags,
                      DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* details,
                      UINT* wrong) override {
    if (number != kNumber) return DISP_E_MEMBERNOTFOUND;
    return application_->Invoke(numberOf(*application_.get(), L"Context"), reserved, locale, flags,
                                arguments, result, details, wrong);
  }

  std::int32_t references = 0;

 private:
  static constexpr DISPID kNumber = 1;  // of the first member of the library's application

  ComPtr<IDispatch> application_;
  ComPtr<ITypeInfo> type_;
};

class Client : public testing::Test {
 protected:
  void SetUp() override {
    host_ = dll_.create("CThreadHost");
    assignApplication(*host_.get(), served(currentApplication()).get());
  }
  void TearDown() override {
    assignApplication(*host_.get(), nullptr);
    host_ = {};
    EXPECT_TRUE(dll_.mayUnload());
    EXPECT_EQ(QuorCom::liveObjects(), 0) << "the DLL has kept an object of the host's";
  }

  HRESULT resultOf(std::string_view className, const wchar_t* member,
                   const std::vector<VARIANT>& arguments) {
    const auto object = dll_.create(className);
    invoke(called_, *object.get(), member, DISPATCH_METHOD, arguments);
    return called_.result;
  }

  Dll dll_{L"QuorAccQueries.dll"};
  fake::Platform platform_;
  ComPtr<IDispatch> host_;
  Called called_;
};

TEST_F(Client, WrongCallsHaveTheStandardResults) {
  const auto queries = dll_.create("CCustomerQueries");
  EXPECT_EQ(numberOf(*queries.get(), L"NoSuchMember"), DISPID_UNKNOWN);
  EXPECT_EQ(numberOf(*queries.get(), L"OPENcustOPENcredits"),
            numberOf(*queries.get(), L"OpenCustOpenCredits"));
  EXPECT_EQ(resultOf("CCustomerQueries", L"NoSuchMember", {}), DISP_E_MEMBERNOTFOUND);
  EXPECT_EQ(resultOf("CCustomerQueries", L"OpenCustOpenCredits", {}), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(resultOf("CCustomerQueries", L"OpenCustOpenCredits", {number(1), number(2)}),
            DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(resultOf("CCustomerQueries", L"OpenCustOpenCredits", {omitted()}), S_OK);
  const Bstr text("no number");
  VARIANT wrong{};
  wrong.vt = VT_BSTR;
  wrong.bstrVal = text.get();
  EXPECT_EQ(resultOf("CCustomerHelper", L"GetCustBalance", {wrong, omitted()}),
            DISP_E_TYPEMISMATCH);
  EXPECT_EQ(called_.wrongArgument, 1U) << "counted from the last argument";
  VARIANT large{};
  large.vt = VT_R8;
  large.dblVal = 5e9;
  EXPECT_EQ(resultOf("CCustomerQueries", L"OpenCustOpenCredits", {large}), DISP_E_OVERFLOW);
  large.vt = VT_NULL;
  EXPECT_EQ(resultOf("CCustomerQueries", L"OpenCustOpenCredits", {large}), DISP_E_EXCEPTION);
  EXPECT_TRUE(called_.error().is(ErrorNumber::InvalidUseOfNull));
}

TEST_F(Client, ArgumentsGoByName) {
  const auto helper = dll_.create("CInventoryHelper");
  std::array<std::wstring, 3> words{L"CalculateAverageCost", L"unitcost", L"QTY"};
  std::array<wchar_t*, 3> names{words[0].data(), words[1].data(), words[2].data()};
  std::array<DISPID, 3> numbers{};
  ASSERT_EQ(helper->GetIDsOfNames(IID_NULL, names.data(), 3, LOCALE_USER_DEFAULT, numbers.data()),
            S_OK);
  // Named ones first, in the order of their names; those not named are empty.
  invoke(called_, *helper.get(), L"CalculateAverageCost", DISPATCH_METHOD, {number(10), number(3)},
         {numbers[1], numbers[2]});
  ASSERT_EQ(called_.result, S_OK);
  EXPECT_EQ(called_.value->vt, VT_CY);
  EXPECT_EQ(numbers[1], 3);
  EXPECT_EQ(numbers[2], 2);
  names[2] = words[0].data();
  EXPECT_EQ(helper->GetIDsOfNames(IID_NULL, names.data(), 3, LOCALE_USER_DEFAULT, numbers.data()),
            DISP_E_UNKNOWNNAME);
  invoke(called_, *helper.get(), L"CalculateAverageCost", DISPATCH_METHOD, {number(10)}, {77});
  EXPECT_EQ(called_.result, DISP_E_PARAMNOTFOUND);
}

TEST_F(Client, ReferencesAreWrittenInTheirOwnTypes) {
  platform_->row = {{"TaxCodeId", Value("GST")}, {"TaxRate", Value(5.0)}, {"ExAcctId", Value(7)}};
  const auto helper = dll_.create("CGeneralLedgerHelper");
  Variant account;
  BSTR code = ::SysAllocString(L"before");
  double rate = 0;
  VARIANT byVariant{}, byText{}, byDouble{};
  byVariant.vt = VT_BYREF | VT_VARIANT;
  byVariant.pvarVal = account.get();
  byText.vt = VT_BYREF | VT_BSTR;
  byText.pbstrVal = &code;
  byDouble.vt = VT_BYREF | VT_R8;
  byDouble.pdblVal = &rate;
  invoke(called_, *helper.get(), L"FindInfoForTaxCode", DISPATCH_METHOD,
         {number(1), byVariant, byText, byDouble});
  ASSERT_EQ(called_.result, S_OK);
  EXPECT_EQ(account->vt, VT_I4);
  EXPECT_EQ(account->lVal, 7);
  EXPECT_EQ(textOf(code), "GST");
  EXPECT_EQ(rate, 5.0);
  ::SysFreeString(code);
}

TEST_F(Client, ObjectsAreTheSameOnBothSides) {
  const auto connection = served(platform_.connection("own"));
  const auto root = dll_.create("CQueries");
  const DISPID assigned = DISPID_PROPERTYPUT;
  invoke(called_, *root.get(), L"CustomConnection", DISPATCH_PROPERTYPUTREF,
         {object(connection.get())}, {assigned});
  ASSERT_EQ(called_.result, S_OK);
  Called first;
  Called second;
  Called back;
  invoke(first, *root.get(), L"Customer", DISPATCH_PROPERTYGET, {});
  invoke(second, *root.get(), L"customer", DISPATCH_METHOD | DISPATCH_PROPERTYGET, {});
  ASSERT_EQ(first.value->vt, VT_DISPATCH);
  EXPECT_EQ(first.value->pdispVal, second.value->pdispVal);
  invoke(back, *first.value->pdispVal, L"CustomConnection", DISPATCH_PROPERTYGET, {});
  EXPECT_EQ(back.value->pdispVal, connection.get());
}

TEST_F(Client, ErrorsOfTheServiceArriveWhole) {
  const auto queries = dll_.create("CCustomerQueries");
  platform_->calls = 0;
  platform_->failAt = 1;
  platform_->serviceRaises = Error(kStatementRefused, "Somewhere \xC3\xA9", "told by the service");
  invoke(called_, *queries.get(), L"OpenCustOpenCredits", DISPATCH_METHOD, {number(1)});
  ASSERT_EQ(called_.result, DISP_E_EXCEPTION);
  EXPECT_EQ(called_.details.scode, static_cast<SCODE>(kStatementRefused));
  const Error error = called_.error();
  EXPECT_EQ(error.source(), "Somewhere \xC3\xA9");
  EXPECT_EQ(error.description(), "told by the service");
}

TEST_F(Client, TheClassOfTheApplicationHasToBeThere) {
  assignApplication(*host_.get(), nullptr);
  const Bstr name("No.SuchClass");
  VARIANT text{};
  text.vt = VT_BSTR;
  text.bstrVal = name.get();
  invoke(called_, *host_.get(), L"ApplicationClass", DISPATCH_PROPERTYPUT, {text},
         {DISPID_PROPERTYPUT});
  ASSERT_EQ(called_.result, S_OK);
  invoke(called_, *host_.get(), L"Application", DISPATCH_PROPERTYGET, {});
  EXPECT_EQ(called_.result, DISP_E_EXCEPTION);
  const Error error = called_.error();
  EXPECT_EQ(error.number(), 429);
  EXPECT_NE(error.description().find("No.SuchClass"), std::string::npos);
  const Bstr none("");
  text.bstrVal = none.get();
  invoke(called_, *host_.get(), L"ApplicationClass", DISPATCH_PROPERTYPUT, {text},
         {DISPID_PROPERTYPUT});
}

TEST_F(Client, TheContextOfAnApplicationIsFoundByItsPlace) {
  Renamed application(served(currentApplication()));
  assignApplication(*host_.get(), &application);
  EXPECT_EQ(resultOf("CCustomerHelper", L"GetCustBalance", {number(1), omitted()}), S_OK);
  EXPECT_GT(platform_->calls, 0);
  EXPECT_GT(application.references, 0);
  assignApplication(*host_.get(), nullptr);
  EXPECT_EQ(application.references, 0);
}

TEST_F(Client, ObjectsBelongToTheirThread) {
  const auto queries = dll_.create("CCustomerQueries");
  HRESULT elsewhere = S_OK;
  HRESULT ownThread = E_FAIL;
  std::thread([&] {
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    Called called;
    DISPPARAMS none{};
    elsewhere = queries->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                                called.value.get(), nullptr, nullptr);
    {
      // An apartment of its own has an application object of its own; what it holds goes with it.
      const fake::Platform platform;
      assignApplication(*dll_.create("CThreadHost").get(), served(currentApplication()).get());
      const auto helper = dll_.create("CCustomerHelper");
      Called balance;
      invoke(balance, *helper.get(), L"GetCustBalance", DISPATCH_METHOD, {number(1), omitted()});
      ownThread = balance.result;
    }
    ::CoUninitialize();
  }).join();
  EXPECT_EQ(elsewhere, RPC_E_WRONG_THREAD);
  EXPECT_EQ(ownThread, S_OK);
}

TEST_F(Client, ClassObjectsKeepTheRules) {
  ComPtr<IClassFactory> factory;
  EXPECT_EQ(dll_.classObject(IID_IUnknown, factory), CLASS_E_CLASSNOTAVAILABLE);
  ASSERT_EQ(dll_.classObject(guidOf(classId("QuorAccQueries", "CQueries")), factory), S_OK);
  void* made = nullptr;
  EXPECT_EQ(factory->CreateInstance(host_.get(), IID_IUnknown, &made), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IClassFactory, &made), E_NOINTERFACE);
  EXPECT_FALSE(dll_.mayUnload());
}

}  // namespace

int main(int count, char** arguments) {
  ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  testing::InitGoogleTest(&count, arguments);
  const int failed = RUN_ALL_TESTS();
  ::CoUninitialize();
  return failed;
}
