#include "host/sql/front_end.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "host/sql/arena.h"
#include "host/sql/names.h"
#include "host/sql/parse/lexer.h"
#include "host/sql/parse/parser.h"
#include "host/sql/resolve/resolver.h"
#include "host/sql/rewrite/rewrite.h"
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
  Description(std::string_view text, Translation& translation)
      : text_(text), translation_(translation) {}

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
    for (const Tree::Constraint& constraint : table.constraints) {
      const auto leads = [&](const Column& column) {
        return sameName(column.name, constraint.columns.front());
      };
      Column& first = *std::ranges::find_if(translation_.created.columns, leads);
      if (constraint.kind != Syntax::Constraint::Kind::ForeignKey) {
        first.leadsIndex = true;
      } else if (constraint.columns.size() == 1) {
        first.reference = true;
      }
    }
  }
  void operator()(const Tree::CreateView& view) const {
    translation_.kind = StatementKind::CreateView;
    translation_.created.name = view.name;
    translation_.created.kind = Relation::Kind::View;
    translation_.created.definition = text_;
    for (const Tree::OutputColumn& column : view.query->columns) {
      translation_.created.columns.push_back(
          {.name = std::string(column.name), .type = column.type});
    }
    if (view.keptOf == nullptr) return;
    translation_.created.keptOf = view.keptOf->name;
    translation_.created.kept.assign(view.kept.begin(), view.kept.end());
    translation_.created.columns.front().leadsIndex = true;
  }
  void operator()(const Tree::CreateIndex& index) const {
    translation_.kind = StatementKind::CreateIndex;
    translation_.created.name = index.name;
    translation_.created.columns.push_back({.name = std::string(index.columns.front().name)});
    translation_.indexedTable = index.table;
  }

 private:
  std::string_view text_;
  Translation& translation_;
};

/// The query of a view. The text was read when the view was made, and so has no errors.
Tree::Query* viewQuery(const Relation& view, const Catalogue& catalogue, Arena& arena) {
  if (view.definition.empty()) return nullptr;
  const StatementText text(view.definition);
  const Syntax::Parsed parsed = Parser(text, Dialect::Server, arena).parse();
  Resolver resolver(text, Dialect::Server, catalogue, arena, parsed.markers);
  return resolver.resolveView(std::get<Syntax::CreateView>(parsed.statement)).query;
}

/// What becomes of a statement before it is written.
enum class Form : std::uint8_t {
  AsItIs,
  WithoutUnread,
  Faster,
};

/// Changes the statement into `form`, and writes it.
std::string write(const Tree::Statement& statement, Form form, const Catalogue& catalogue,
                  Arena& arena, const Writer& writer) {
  const auto views = [&](const Relation& view) { return viewQuery(view, catalogue, arena); };
  if (form == Form::WithoutUnread) {
    leaveUnread(statement, views, writer, arena);
  } else if (form == Form::Faster) {
    rewrite(*std::get<Tree::Query*>(statement.body), catalogue, views, arena);
  }
  return writer.write(statement);
}

}  // namespace

Translation translate(std::string_view text, Dialect dialect, const Catalogue& catalogue,
                      const Writer& writer, Rewriting rewriting) try {
  Arena arena;
  const StatementText statementText(text);
  const Syntax::Parsed parsed = Parser(statementText, dialect, arena).parse();
  Translation translation;
  const auto resolve = [&] {
    Resolver resolver(statementText, dialect, catalogue, arena, parsed.markers);
    const Tree::Statement statement = resolver.resolve(parsed.statement);
    translation.markers = resolver.markers();
    return statement;
  };
  Tree::Statement statement = resolve();
  std::visit(Description(text, translation), statement.body);
  const bool isQuery = translation.kind == StatementKind::Select;
  Form form = isQuery && rewriting == Rewriting::Faster ? Form::Faster : Form::WithoutUnread;
  for (;; form = form == Form::Faster ? Form::WithoutUnread : Form::AsItIs) {
    try {
      translation.sql = write(statement, form, catalogue, arena, writer);
      return translation;
    } catch (const QuorDataLib::Error&) {
      // A view's select may make it too deep a statement; as it was, it may not be.
      if (form == Form::AsItIs) throw;
      statement = resolve();
    }
  }
} catch (...) {
  throw QuorDataLib::currentError();
}

std::string singleTable(std::string_view query, Dialect dialect) try {
  Arena arena;
  const StatementText text(query);
  const Syntax::Parsed parsed = Parser(text, dialect, arena).parse();
  const auto* const read = std::get_if<Syntax::Query*>(&parsed.statement);
  if (read == nullptr || (*read)->branches.size() != 1) return {};
  const Syntax::Select* const select = (*read)->branches.front().select;
  if (select == nullptr || select->distinct || select->having != nullptr ||
      !select->groupBy.empty() || select->from == nullptr || select->from->left != nullptr) {
    return {};
  }
  const bool plain = std::ranges::all_of(select->items, [](const Syntax::Item& item) {
    return item.alias.empty() &&
           (item.value == nullptr || item.value->kind == Syntax::Expression::Kind::Name);
  });
  return plain ? std::string(select->from->table) : std::string();
} catch (const QuorDataLib::Error&) {
  return {};
}

void enter(const Translation& definition, Catalogue& catalogue) {
  if (definition.kind == StatementKind::CreateIndex) {
    catalogue.addIndex(definition.indexedTable, definition.created.columns.front().name);
  } else {
    catalogue.add(definition.created);
  }
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
