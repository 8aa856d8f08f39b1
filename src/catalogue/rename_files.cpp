#include "catalogue/rename_files.h"

#include "catalogue/rename_plan.h"
#include "catalogue/rename_steps.h"

namespace ml::catalogue {

std::string RenameOne(const std::string& source, const std::string& destination, CaseMode caseMode,
                      const RenameTools& tools) {
  const auto plan = PlanRename({source}, {destination}, caseMode, tools.companions, tools.fileSystem);
  RunSteps(plan.steps, NotedPlan::IfPossible, tools);
  return plan.newPaths.front();
}

std::vector<std::string> RenameFiles(const std::vector<std::string>& sources,
                                     const std::vector<std::string>& destinations, CaseMode caseMode,
                                     const RenameTools& tools) {
  auto plan = PlanRename(sources, destinations, caseMode, tools.companions, tools.fileSystem);
  RunSteps(plan.steps, NotedPlan::Required, tools);
  return plan.newPaths;
}

}  // namespace ml::catalogue
