// Projects: what names one, and their budgets.
#include <array>

#include "host/company/checks/check.h"

namespace QuorHost {
namespace {

constexpr std::array kProjectChecks{
    Check{.rule = "ledger lines name projects that there are",
          .query = "SELECT GLDet.InGLDetId, GLDet.ExProjId FROM GLDet "
                   "LEFT JOIN Proj ON Proj.InProjId = GLDet.ExProjId "
                   "WHERE NOT GLDet.ExProjId IS NULL AND Proj.InProjId IS NULL "
                   "ORDER BY GLDet.InGLDetId",
          .finding = "Row {0} of GLDet is on project {1}, which is missing in Proj"},
    Check{.rule = "lines of purchases name projects that there are",
          .query = "SELECT PurcDet.InPurcDetId, PurcDet.ExProjId FROM PurcDet "
                   "LEFT JOIN Proj ON Proj.InProjId = PurcDet.ExProjId "
                   "WHERE NOT PurcDet.ExProjId IS NULL AND Proj.InProjId IS NULL "
                   "ORDER BY PurcDet.InPurcDetId",
          .finding = "Row {0} of PurcDet is on project {1}, which is missing in Proj"},
    Check{.rule = "lines of pays name projects that there are",
          .query = "SELECT TrxPayDetails.InTrxPayDetId, TrxPayDetails.ExProjId FROM TrxPayDetails "
                   "LEFT JOIN Proj ON Proj.InProjId = TrxPayDetails.ExProjId "
                   "WHERE NOT TrxPayDetails.ExProjId IS NULL AND Proj.InProjId IS NULL "
                   "ORDER BY TrxPayDetails.InTrxPayDetId",
          .finding = "Row {0} of TrxPayDetails is on project {1}, which is missing in Proj"},
    Check{.rule = "a project has one budget for a segment and a period",
          .query = "SELECT ExID, ExSegmentId, ExFiscalYearDetId, COUNT(*) FROM ProjBudgets "
                   "GROUP BY ExID, ExSegmentId, ExFiscalYearDetId HAVING COUNT(*) > 1 "
                   "ORDER BY ExID, ExSegmentId, ExFiscalYearDetId",
          .finding = "Project {0} has {3} budgets in ProjBudgets for segment {1} and fiscal period "
                     "{2}, which all count"},
};

}  // namespace

std::span<const Check> projectChecks() { return kProjectChecks; }

}  // namespace QuorHost
