#include "platform/collection.h"

namespace QuorDataLib {

Value Collection::Item(std::int32_t Index) const {
  if (Index < 1 || Index > Count()) {
    raise(ErrorNumber::SubscriptOutOfRange, "There is no item " + std::to_string(Index) +
                                                " in a collection of " + std::to_string(Count()) +
                                                ": items are counted from 1");
  }
  return values_[static_cast<std::size_t>(Index) - 1];
}

bool Enumerator::Next(Value& Item) {
  if (passed_ == values_.size()) return false;
  Item = values_[passed_++];
  return true;
}

Ref<Enumerator> Enumerator::copy() const {
  const auto other = std::make_shared<Enumerator>(values_);
  other->passed_ = passed_;
  return other;
}

}  // namespace QuorDataLib
