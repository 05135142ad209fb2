#include "sql/statement_files.h"

#include <fstream>
#include <sstream>
#include <utility>

namespace QuorHost::Sql::Testing {

std::string fileText(const std::string& path) {
  const std::ifstream file(path);
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

std::vector<std::string> statementsOf(const std::string& area) {
  std::vector<std::string> statements;
  std::stringstream lines(fileText(STATEMENTS_DIR "/" + area + ".sql"));
  std::string statement;
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty()) statement += line + "\r\n";
    if ((line.empty() || lines.peek() == EOF) && !statement.empty()) {
      statements.push_back(std::exchange(statement, {}));
    }
  }
  return statements;
}

}  // namespace QuorHost::Sql::Testing
