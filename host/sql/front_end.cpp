#include "host/sql/front_end.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "host/sql/arena.h"
#include "host/sql/lexer.h"
#include "host/sql/parser.h"
#include "host/sql/resolver.h"
#include "host/sql/writer.h"
#include "platform/error.h"

namespace QuorHost::Sql {
namespace {

/// The table whose rows a query gives as they are, or no name.
std::string_view updatableTable(const Tree::Query& query) {
  const Tree::Select* const select =
      query.branches.size() == 1 ? query.branches.front().select : nullptr;
  if (select == nullptr || select->distinct || select->grouped || select->from == nullptr)
    return {};
  const Tree::Source* const source = select->from->source;
  if (source == nullptr || source->relation == nullptr ||
      source->relation->kind != Relation::Kind::Table) {
    return {};
  }
  const bool plain = std::ranges::all_of(select->outputs, [&](const Tree::Output& output) {
    return output.value->kind == Tree::Expression::Kind::Column && output.value->source == source;
  });
  return plain ? std::string_view(source->relation->name) : std::string_view();
}

/// Fills in what a translation tells about its statement, beside the SQL.
class Description {
 public:
  explicit Description(Translation& translation) : translation_(translation) {}

  void operator()(const Tree::Query* query) const {
    translation_.kind = StatementKind::Select;
    for (const Tree::OutputColumn& column : query->columns) {
      translation_.columns.push_back({std::string(column.name), column.type});
    }
    translation_.updatableTable = updatableTable(*query);
  }
  void operator()(const Tree::Insert&) const { translation_.kind = StatementKind::Insert; }
  void operator()(const Tree::Update&) const { translation_.kind = StatementKind::Update; }
  void operator()(const Tree::Delete&) const { translation_.kind = StatementKind::Delete; }

  void operator()(const Tree::CreateTable& table) const {
    translation_.kind = StatementKind::CreateTable;
    translation_.created.name = table.name;
    for (const Tree::TableColumn& column : table.columns) {
      translation_.created.columns.push_back({.name = std::string(column.name),
                                              .type = column.type,
                                              .size = column.size,
                                              .nullable = column.nullable,
                                              .primaryKey = column.primaryKey,
                                              .identity = column.identity});
    }
  }
  void operator()(const Tree::CreateView& view) const {
    translation_.kind = StatementKind::CreateView;
    translation_.created.name = view.name;
    translation_.created.kind = Relation::Kind::View;
    for (const Tree::OutputColumn& column : view.query->columns) {
      translation_.created.columns.push_back(
          {.name = std::string(column.name), .type = column.type});
    }
  }
  void operator()(const Tree::CreateIndex& index) const {
    translation_.kind = StatementKind::CreateIndex;
    translation_.created.name = index.name;
  }

 private:
  Translation& translation_;
};

}  // namespace

Translation translate(std::string_view text, Dialect dialect, const Catalogue& catalogue,
                      const Writer& writer) try {
  Arena arena;
  const StatementText statementText(text);
  const Syntax::Parsed parsed = Parser(statementText, dialect, arena).parse();
  Resolver resolver(statementText, dialect, catalogue, arena, parsed.markers);
  const Tree::Statement statement = resolver.resolve(parsed.statement);
  Translation translation;
  translation.sql = writer.write(statement);
  translation.markers = resolver.markers();
  std::visit(Description(translation), statement.body);
  return translation;
} catch (...) {
  throw QuorDataLib::currentError();
}

std::vector<std::string> splitStatements(std::string_view text) {
  std::vector<std::string> statements;
  const StatementText statementText(text);
  const char* begin = text.data();
  bool empty = true;
  for (const Token& token : tokenize(statementText, Dialect::Server)) {
    if (token.lexeme != Lexeme::Semicolon && token.lexeme != Lexeme::End) {
      empty = false;
      continue;
    }
    const char* const end = token.word.data();
    if (!empty) {
      const std::string_view piece(begin, static_cast<std::size_t>(end - begin));
      const std::size_t first = piece.find_first_not_of(" \t\r\n");
      statements.emplace_back(piece.substr(first, piece.find_last_not_of(" \t\r\n") + 1 - first));
    }
    begin = end + token.word.size();
    empty = true;
  }
  return statements;
}

}  // namespace QuorHost::Sql
