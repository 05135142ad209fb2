// Lists of values: arrays of variants, and the collections of anybody.
#pragma once

#include <windows.h>
// After it, since it stands on its types.
#include <oleauto.h>

#include <string_view>
#include <vector>

#include "platform/collection.h"

namespace QuorCom {

/// What member tables call the values that fill a statement's markers.
inline constexpr std::string_view kParameters = "Parameters";

/// The elements of an array of one dimension, in their order. Raises 13 for another.
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::Collection> readArray(SAFEARRAY* array);

/// A new array of variants for the caller, counted from 0.
[[nodiscard]] SAFEARRAY* newArray(const std::vector<QuorDataLib::Value>& values);

/// What an object gives that can be walked: by its enumerator, or else by its count and its items
/// from 1. Raises 13 when it can do neither.
[[nodiscard]] QuorDataLib::Ref<QuorDataLib::Collection> readCollection(IDispatch* object);

}  // namespace QuorCom
