// From tokens to the syntax tree. Grammar only: no name is looked up but those of functions and
// types.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/sql/arena.h"
#include "host/sql/dialect.h"
#include "host/sql/parse/lexer.h"
#include "host/sql/statement_text.h"
#include "host/sql/syntax.h"

namespace QuorHost::Sql {

/// Reads one statement by recursive descent. Everything outside the subset is refused with its word
/// and place.
class Parser {
 public:
  /// The tree's texts are slices of `text` or live in `arena`.
  Parser(const StatementText& text, Dialect dialect, Arena& arena);

  /// The statement's tree. Raises a refused statement for what is not in the grammar.
  Syntax::Parsed parse();

 private:
  /// Expressions, parentheses and sub-selects may be nested this deep.
  static constexpr int kDeepest = 200;
  static constexpr std::size_t kMostTables = 64;
  /// The time that the storage engine takes for them grows with their square.
  static constexpr std::uint32_t kMostMarkers = 10'000;

  /// One level of nesting, for as long as it lives.
  class Level {
   public:
    explicit Level(Parser& parser);
    ~Level() { --parser_.level_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

   private:
    Parser& parser_;
  };

  // Tokens.
  [[nodiscard]] const Token& token(std::size_t ahead = 0) const;
  [[nodiscard]] bool at(Lexeme lexeme) const { return token().lexeme == lexeme; }
  [[nodiscard]] bool atName(std::string_view name, std::size_t ahead = 0) const;
  const Token& next();
  bool accept(Lexeme lexeme);
  bool acceptName(std::string_view name);
  const Token& expect(Lexeme lexeme, const char* expected);
  void expectName(std::string_view name);
  [[noreturn]] void unexpected(const std::string& expected) const;
  [[noreturn]] void tooDeep(std::string_view word) const;
  [[nodiscard]] std::string_view nameText(const Token& name);
  [[nodiscard]] std::string_view literalText(const Token& literal);
  [[nodiscard]] std::string_view undoubled(std::string_view body, char quote);
  [[nodiscard]] std::string_view slice(const Token& first, const Token& last) const;
  std::int32_t readCount(const char* expected);

  // Statements.
  Syntax::Statement parseStatement();
  Syntax::Insert parseInsert();
  Syntax::Update parseUpdate();
  Syntax::Delete parseDelete();
  Syntax::Name parseTableName(const char* expected);
  Syntax::Name parseName(const char* expected);
  std::span<Syntax::Name> parseNameList(const char* expected);

  // Definitions.
  Syntax::Statement parseCreate();
  Syntax::CreateTable parseCreateTable();
  Syntax::CreateIndex parseCreateIndex(bool unique);
  Syntax::ColumnDefinition parseColumn(std::vector<Syntax::Constraint>& constraints);
  bool parseColumnRule(Syntax::ColumnDefinition& column,
                       std::vector<Syntax::Constraint>& constraints);
  bool parseTableConstraint(std::vector<Syntax::Constraint>& constraints);
  void parseReferences(Syntax::Constraint& constraint);
  Syntax::Expression* parseDefault();
  Syntax::TypeName parseType();
  void parseDecimals(Syntax::TypeName& type);
  void parseLength(Syntax::TypeName& type);

  // Queries.
  Syntax::Query* parseQuery();
  Syntax::Branch parseBranch();
  Syntax::Select* parseSelect();
  void parseTop(Syntax::Select& select);
  Syntax::Item parseItem();
  std::string_view parseAlias(bool needsAs);
  Syntax::From* parseFrom();
  Syntax::From* parseJoins();
  bool parseJoinWords(Syntax::JoinKind& kind);
  Syntax::From* parseSource();
  std::span<Syntax::OrderItem> parseOrderBy();
  [[nodiscard]] bool atQuery() const;
  [[nodiscard]] bool continuesQuery(std::size_t index) const;

  // Expressions.
  Syntax::Expression* parseExpression();
  Syntax::Expression* parseChain(Operator op);
  Syntax::Expression* parseCondition();
  Syntax::Expression* parsePredicate(Syntax::Expression* left);
  Syntax::Expression* parseIn(Syntax::Expression* left, bool negated);
  Syntax::Expression* parseArithmetic(int precedence);
  Syntax::Expression* parseUnary();
  Syntax::Expression* parsePrimary();
  Syntax::Expression* parseNamed();
  Syntax::Expression* parseCall();
  Syntax::Expression* parseCase();
  Syntax::Expression* parseCast();
  Syntax::Expression* parseConvert();
  Syntax::Expression* parseSubSelect(Syntax::Expression::Kind kind, std::string_view word);
  std::vector<Syntax::Expression*> parseExpressionList();
  Syntax::Expression* make(Syntax::Expression expression,
                           std::span<Syntax::Expression* const> args);
  Syntax::Expression* make(const Syntax::Expression& expression,
                           std::initializer_list<Syntax::Expression*> args) {
    return make(expression, std::span(args.begin(), args.size()));
  }
  void countDepth(int depth, std::string_view word);

  const StatementText& text_;
  const Dialect dialect_;
  const DialectRules& rules_;
  Arena& arena_;
  std::vector<Token> tokens_;
  std::size_t position_ = 0;
  std::uint32_t markers_ = 0;
  int level_ = 0;
  /// A table may be called `dbo.name`, as it must be in a view whose rows are kept.
  bool ownersStand_ = false;
  int deepest_ = 0;  // depth of the deepest expression of the current query
};

}  // namespace QuorHost::Sql
