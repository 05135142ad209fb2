/* A client that knows nothing but the type library: names, numbers and types come from there. */
#define COBJMACROS
#include <windows.h>
/* After it, since they stand on its types. */
#include <oleauto.h>
#include <ocidl.h>
#include <stdio.h>

static int failed(const char* what, HRESULT result) {
  fprintf(stderr, "early_bound: %s: 0x%08lx\n", what, (unsigned long)result);
  return 1;
}

/* The description of a class or an interface of the library. */
static HRESULT find(ITypeLib* library, const wchar_t* wanted, ITypeInfo** info) {
  wchar_t name[64];
  MEMBERID member;
  USHORT count = 1;
  lstrcpynW(name, wanted, 64);
  HRESULT result = ITypeLib_FindName(library, name, 0, info, &member, &count);
  return SUCCEEDED(result) && count == 0 ? TYPE_E_ELEMENTNOTFOUND : result;
}

/* Whether a function takes what it is going to be given: currencies in, a currency out. */
static int takesCurrencies(ITypeInfo* info, MEMBERID member, UINT arguments) {
  TYPEATTR* attributes;
  int found = 0;
  if (FAILED(ITypeInfo_GetTypeAttr(info, &attributes))) return 0;
  for (UINT i = 0; i < attributes->cFuncs && !found; ++i) {
    FUNCDESC* function;
    if (FAILED(ITypeInfo_GetFuncDesc(info, i, &function))) continue;
    found = function->memid == member && function->cParams == (SHORT)arguments &&
            function->elemdescFunc.tdesc.vt == VT_CY;
    for (UINT j = 0; found && j < arguments; ++j) {
      found = function->lprgelemdescParam[j].tdesc.vt == VT_CY;
    }
    ITypeInfo_ReleaseFuncDesc(info, function);
  }
  ITypeInfo_ReleaseTypeAttr(info, attributes);
  return found;
}

typedef HRESULT(WINAPI* GetClassObject)(REFCLSID, REFIID, void**);

int main(void) {
  ITypeLib* library;
  ITypeInfo* made;
  ITypeInfo* members;
  TYPEATTR* attributes;
  IClassFactory* factory;
  IDispatch* host;
  IDispatch* object;
  ITypeInfo* own;
  wchar_t average[] = L"FormatOfNothing";
  wchar_t* name = average;
  MEMBERID member;
  HRESULT result;

  CoInitializeEx(NULL, COINIT_APARTMENTTHREADED);
  result = LoadTypeLibEx(L"QuorAccQueries.dll", REGKIND_NONE, &library);
  if (FAILED(result)) return failed("no type library", result);
  result = find(library, L"CThreadHost", &made);
  if (FAILED(result)) return failed("no class CThreadHost", result);
  ITypeInfo_GetTypeAttr(made, &attributes);
  HMODULE module = LoadLibraryW(L"QuorAccQueries.dll");
  GetClassObject get = (GetClassObject)(void*)GetProcAddress(module, "DllGetClassObject");
  result = get(&attributes->guid, &IID_IClassFactory, (void**)&factory);
  if (FAILED(result)) return failed("no class object", result);
  ITypeInfo_ReleaseTypeAttr(made, attributes);

  /* The object by the interface that the library says is the class's own. */
  result = find(library, L"_CThreadHost", &members);
  if (FAILED(result)) return failed("no interface _CThreadHost", result);
  ITypeInfo_GetTypeAttr(members, &attributes);
  result = IClassFactory_CreateInstance(factory, NULL, &attributes->guid, (void**)&host);
  if (FAILED(result)) return failed("no object by its own interface", result);
  ITypeInfo_ReleaseTypeAttr(members, attributes);
  if (SUCCEEDED(ITypeInfo_GetIDsOfNames(members, &name, 1, &member))) {
    return failed("a member that is not there is known", S_OK);
  }
  wchar_t live[] = L"LiveObjects";
  name = live;
  result = ITypeInfo_GetIDsOfNames(members, &name, 1, &member);
  if (FAILED(result)) return failed("LiveObjects is not known", result);
  VARIANT value;
  DISPPARAMS none = {NULL, NULL, 0, 0};
  VariantInit(&value);
  result = ITypeInfo_Invoke(members, host, member, DISPATCH_PROPERTYGET, &none, &value, NULL, NULL);
  if (FAILED(result) || value.vt != VT_I4 || value.lVal != 1) return failed("LiveObjects", result);

  /* The types of a function with arguments, and what an object says of itself. */
  result = find(library, L"_CInventoryHelper", &members);
  if (FAILED(result)) return failed("no interface _CInventoryHelper", result);
  wchar_t calculate[] = L"CalculateAverageCost";
  name = calculate;
  result = ITypeInfo_GetIDsOfNames(members, &name, 1, &member);
  if (FAILED(result) || !takesCurrencies(members, member, 4)) {
    return failed("CalculateAverageCost does not take currencies", result);
  }
  result = IDispatch_GetTypeInfo(host, 0, LOCALE_USER_DEFAULT, &own);
  if (FAILED(result)) return failed("the object has no type", result);
  result = IDispatch_QueryInterface(host, &IID_IProvideClassInfo, (void**)&object);
  if (FAILED(result)) return failed("the object does not tell its class", result);
  IDispatch_Release(object);
  ITypeInfo_Release(own);
  ITypeInfo_Release(members);
  ITypeInfo_Release(made);
  ITypeLib_Release(library);
  IClassFactory_Release(factory);
  if (IDispatch_Release(host) != 0) return failed("the object is held by somebody", S_OK);
  typedef HRESULT(WINAPI * CanUnload)(void);
  result = ((CanUnload)(void*)GetProcAddress(module, "DllCanUnloadNow"))();
  if (result != S_OK) return failed("the DLL is still in use", result);
  CoUninitialize();
  puts("early bound: well");
  return 0;
}
