#include "host/company/company.h"

namespace QuorHost {

namespace {

using QuorDataLib::Date;
using QuorDataLib::Recordset;
using QuorDataLib::Ref;

Ref<Recordset> open(Store& store, const std::string& sql) {
  return store.connect(Sql::Dialect::Server)->OpenRecordset(sql, 4, 0, {}, 0);
}

/// Widens the company's range of documents by those of one table.
void widen(CompanyInfo& info, Store& store, const std::string& table, const std::string& column) {
  if (store.catalogue().find(table) == nullptr) return;
  for (const bool last : {false, true}) {
    std::string sql = last ? "SELECT MAX(" : "SELECT MIN(";
    sql += column;
    sql += ") FROM ";
    sql += table;
    const Ref<Recordset> row = open(store, sql);
    if (row->Field(0).isNull()) return;
    const Date date = row->Field(0).toDate();
    Date& bound = last ? info.lastDocument : info.firstDocument;
    if (bound.empty() || (last ? date > bound : date < bound)) bound = date;
  }
}

}  // namespace

CompanyInfo describeCompany(Store& store) {
  CompanyInfo info;
  info.engine = store.engineName();
  info.sizeInBytes = store.sizeInBytes();
  info.schemaVersion = store.schemaVersion();
  for (const Sql::Relation& relation : store.catalogue().relations()) {
    const Ref<Recordset> count =
        open(store, "SELECT COUNT(*) AS RecordCount FROM [" + relation.name + "]");
    info.relations.push_back({relation.name, relation.kind, count->Field(0).toLong()});
  }
  widen(info, store, "InvoiHdr", "InvoiDate");
  widen(info, store, "PurcHdr", "PurcDate");
  return info;
}

}  // namespace QuorHost
