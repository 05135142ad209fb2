// Statements that ask the application's objects: each is one step, whatever way it takes to the
// object that answers. `ask` is a member of that object or a callable on it:
//
//   chart = askCompany(step, &Company::CieAccountTypeChart);
//   days = askUtility(step, [&](Utility& utility) { return utility.DaysInMonth(year, month); });
#pragma once

#include <source_location>

#include "core/error_trap.h"
#include "core/mutils.h"
#include "platform/current_application.h"
#include "platform/data_library.h"
#include "platform/foundation.h"

namespace QuorAccQueries {

/// A statement along objects of the application context: `links` lead from there.
template <class... Links>
auto askContext(Steps& step, std::source_location where, Links&&... links) {
  return step.along(where, &QuorDataLib::currentApplication, &QuorDataLib::Application::Context,
                    links...);
}

template <class Ask>
auto askDataServices(Steps& step, Ask&& ask,
                     std::source_location where = std::source_location::current()) {
  return askContext(step, where, &QuorDataLib::ApplicationContext::DataServices, ask);
}

template <class Ask>
auto askUtility(Steps& step, Ask&& ask,
                std::source_location where = std::source_location::current()) {
  return askContext(step, where, &QuorDataLib::ApplicationContext::Utility, ask);
}

/// A statement along objects of the foundation: `links` lead from its application object.
template <class... Links>
auto askFoundation(Steps& step, std::source_location where, Links&&... links) {
  return step.along(where, &MUtils::QuorCastriaFoundation,
                    &QuorCastriaFoundation::CCastriaHelper::Application, links...);
}

template <class Ask>
auto askCompany(Steps& step, Ask&& ask,
                std::source_location where = std::source_location::current()) {
  return askFoundation(step, where, &QuorCastriaFoundation::CastriaApplication::Company, ask);
}

template <class Ask>
auto askCurrencyInfo(Steps& step, Ask&& ask,
                     std::source_location where = std::source_location::current()) {
  return askFoundation(step, where, &QuorCastriaFoundation::CastriaApplication::Company,
                       &QuorCastriaFoundation::Company::CurrencyInfo, ask);
}

}  // namespace QuorAccQueries
