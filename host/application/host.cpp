#include "host/application/host.h"

#include <utility>

#include "host/application/context.h"
#include "host/application/dry_run.h"
#include "host/application/foundation.h"
#include "host/application/overrides.h"
#include "host/application/services.h"
#include "host/application/trace.h"
#include "platform/current_application.h"
#include "platform/error.h"

namespace QuorHost {

using QuorDataLib::Connection;
using QuorDataLib::make;
using QuorDataLib::Ref;

struct Host::State {
  Ref<QuorDataLib::Application> application;
  Ref<Connection> customConnection;
  Sql::Dialect dialect = Sql::Dialect::Server;
};

namespace {

/// Gives objects a trace, or leaves them as they are when there is none.
class Tracing {
 public:
  explicit Tracing(std::ostream* out)
      : trace_(out != nullptr ? std::make_shared<Trace>(*out) : nullptr) {}

  template <class T, class... Role>
  Ref<T> operator()(Ref<T> object, Role... role) const {
    return trace_ ? traced(trace_, std::move(object), role...) : object;
  }

 private:
  SharedTrace trace_;
};

Sql::Dialect dialectOf(const HostOptions& options) {
  if (options.dialect) return *options.dialect;
  const auto only = options.store ? options.store->onlyDialect() : std::nullopt;
  return only.value_or(Sql::Dialect::Server);
}

Ref<Connection> connect(const HostOptions& options, Sql::Dialect dialect) {
  if (!options.store) return make<DryRunConnection>();
  return options.store->connect(dialect);
}

/// The company as the host itself asks it: its values show in no trace.
Ref<QuorCastriaFoundation::Company> makeCompany(const SharedSources& sources,
                                                const Tracing& tracing) {
  using QuorCastriaFoundation::CurrencyInfo;
  return make<FoundationCompany>(sources,
                                 tracing(Ref<CurrencyInfo>(make<FoundationCurrencyInfo>(sources))));
}

Ref<QuorCastriaFoundation::CastriaApplication> makeFoundation(
    const SharedSources& sources, const Ref<QuorCastriaFoundation::Company>& company,
    const Tracing& tracing) {
  using QuorCastriaFoundation::Declares;
  using QuorCastriaFoundation::Settings;
  return make<FoundationApplication>(tracing(Ref<Settings>(make<FoundationSettings>(sources))),
                                     tracing(company),
                                     tracing(Ref<Declares>(make<FoundationDeclares>())));
}

}  // namespace

Host::Host(const HostOptions& options) : state_(std::make_shared<State>()) {
  const auto sources = std::make_shared<const FoundationSources>(
      FoundationSources{CompanyTables(options.store), readOverrides(options.overrides)});
  const Tracing tracing(options.trace);
  const Sql::Dialect dialect = state_->dialect = dialectOf(options);
  const Ref<Connection> defaultConnection = tracing(connect(options, dialect), "default");
  state_->customConnection = tracing(connect(options, dialect), "custom");
  const Ref<QuorCastriaFoundation::Company> company = makeCompany(sources, tracing);
  state_->application = makeApplication(
      {.dataServices = tracing(Ref<QuorDataLib::DataServices>(
           make<HostDataServices>(sources, defaultConnection, dialect, options.store == nullptr))),
       .errorService =
           tracing(Ref<QuorDataLib::ErrorService>(make<HostErrorService>(options.onError))),
       .settingsReader =
           tracing(Ref<QuorDataLib::SettingsReader>(make<HostSettingsReader>(sources))),
       .utility = make<HostUtility>(dialect, company),
       .foundation = makeFoundation(sources, company, tracing)});
}

Host::~Host() {
  if (QuorDataLib::heldApplication() == state_->application) QuorDataLib::installApplication({});
}

void Host::install() {
  QuorDataLib::installApplication([application = state_->application] { return application; });
  // Held from now on, so that the host's end finds it.
  static_cast<void>(QuorDataLib::currentApplication());
}

Ref<QuorDataLib::Application> Host::application() const { return state_->application; }

Sql::Dialect Host::dialect() const { return state_->dialect; }

Ref<Connection> Host::connection() const { return state_->customConnection; }

}  // namespace QuorHost
