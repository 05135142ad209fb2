#include "postgres/cluster.h"

#include <libpq-fe.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <vector>

namespace QuorHost::Testing {
namespace {

namespace fs = std::filesystem;

/// The folder of the newest server's programs; empty where there is none.
fs::path serverPrograms() {
  fs::path newest;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator("/usr/lib/postgresql", error)) {
    if (fs::exists(entry.path() / "bin/initdb") && entry.path() > newest) newest = entry.path();
  }
  return newest.empty() ? newest : newest / "bin";
}

/// Starts a program, which the server's own must not be run by root; it ends with this process.
pid_t startProgram(std::vector<std::string> words) {
  std::vector<std::string> all{"setpriv", "--pdeathsig", "QUIT"};
  if (::geteuid() == 0) {
    all.insert(all.end(), {"--reuid", "nobody", "--regid", "nogroup", "--clear-groups"});
  }
  all.insert(all.end(), words.begin(), words.end());
  const pid_t child = ::fork();
  if (child != 0) return child;
  std::vector<char*> arguments;
  arguments.reserve(all.size() + 1);
  for (std::string& word : all) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  // What it has to say nobody reads.
  if (std::freopen("/dev/null", "w", stdout) == nullptr) ::_exit(1);
  if (std::freopen("/dev/null", "w", stderr) == nullptr) ::_exit(1);
  ::execvp(arguments[0], arguments.data());
  ::_exit(127);
}

}  // namespace

Cluster* Cluster::instance() {
  static const fs::path programs = serverPrograms();
  if (programs.empty()) return nullptr;
  static Cluster cluster(programs);
  return &cluster;
}

Cluster::Cluster(const fs::path& programs) : programs_(programs) {
  // A socket's path is short: so is the folder's.
  std::string name = "/tmp/qpg-XXXXXX";
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  folder_ = name;
  fs::permissions(folder_, fs::perms::all);
  int status = 0;
  ::waitpid(launch({"initdb", "--no-sync", "-A", "trust", "-U", "quor", "-E", "UTF8", "--locale=C",
                    "-D", (folder_ / "data").string()}),
            &status, 0);
  if (status != 0) throw std::runtime_error("initdb failed");
  start();
}

Cluster::~Cluster() {
  stop();
  std::error_code error;
  fs::remove_all(folder_, error);
}

pid_t Cluster::launch(std::vector<std::string> words) const {
  words.front() = (programs_ / words.front()).string();
  return startProgram(std::move(words));
}

void Cluster::start() {
  server_ = launch({"postgres", "-D", (folder_ / "data").string(), "-k", folder_.string(), "-c",
                    "listen_addresses=", "-c", "fsync=off", "-c", "autovacuum=off"});
  for (int i = 0; PQping(company("public").c_str()) != PQPING_OK; ++i) {
    if (i == 500) throw std::runtime_error("the server does not start");
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
  }
}

void Cluster::stop() {
  beside_.reset();
  ::kill(server_, SIGQUIT);
  ::waitpid(server_, nullptr, 0);
}

std::string Cluster::company(const std::string& name) const { return companyAs("quor", name); }

std::string Cluster::companyAs(const std::string& role, const std::string& name) const {
  const std::string server = "postgresql://" + role + "@/postgres?host=" + folder_.string();
  return name == "public" ? server : server + "&schema=" + name;
}

std::string Cluster::run(const std::string& sql) const {
  if (!beside_ || PQstatus(beside_.get()) == CONNECTION_BAD) {
    beside_.reset(PQconnectdb(company("public").c_str()));
    PQsetNoticeProcessor(beside_.get(), [](void*, const char*) {}, nullptr);
  }
  PGresult* const result = PQexec(beside_.get(), sql.c_str());
  std::string value =
      PQntuples(result) > 0 ? PQgetvalue(result, 0, 0) : PQresultErrorMessage(result);
  PQclear(result);
  // The next statement knows nothing of this one.
  PQclear(PQexec(beside_.get(), "DISCARD ALL"));
  return value;
}

}  // namespace QuorHost::Testing
