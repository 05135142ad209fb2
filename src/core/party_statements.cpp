#include "core/party_statements.h"

namespace QuorAccQueries {

Statement balanceStatement(const BalanceTexts& texts, std::int32_t party, QuorDataLib::Date upTo,
                           std::int32_t segment, const std::string& extraFields) {
  std::string list(texts.party);
  if (!extraFields.empty()) list += ", " + extraFields;
  Statement statement;
  statement.text("SELECT ").fragment(list).text(texts.sums);
  Conditions where(statement);
  if (party != 0) where.add(texts.ofParty, party);
  if (!upTo.empty()) where.add(" BalanceDate <= ? ", upTo);
  if (segment != 0) where.add(texts.ofSegment, segment);
  statement.text("GROUP BY ").fragment(list).text(texts.orderBy).fragment(list);
  return statement;
}

Statement projectCostStatement(const ProjectCostTexts& texts, std::int32_t bankAccount,
                               std::int32_t serviceAccount, std::int32_t party,
                               QuorDataLib::Date upTo, std::int32_t project, std::int32_t segment,
                               const std::string& extraFields) {
  std::string list(texts.list);
  if (!extraFields.empty()) list += ", " + extraFields + " ";
  Statement statement;
  statement.text(texts.sums).fragment(list);
  statement.text(texts.lines).bind(bankAccount).bind(serviceAccount);
  if (party != 0 || !upTo.empty() || segment != 0) {
    if (party != 0) statement.text(texts.ofParty).bind(party);
    if (!upTo.empty()) statement.text(" AND GLDet.DetDate <= ? ").bind(upTo);
    if (project != 0) statement.text(" AND ExProjId = ? ").bind(project);
    if (segment != 0) statement.text(" AND ExSegmentId = ? ").bind(segment);
  }
  statement.text(texts.groupBy).fragment(list).text(texts.orderBy).fragment(list);
  return statement;
}

}  // namespace QuorAccQueries
