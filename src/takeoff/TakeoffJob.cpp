#include "takeoff/TakeoffJob.hpp"

namespace tq {

std::optional<TakeoffJob> TakeoffJob::Open(const Drawing& drawing, const Folders& folders, const std::vector<ObjectId>& sheets) {
  TakeoffJob job;
  job.data = CollectTakeoffRows(drawing, sheets);
  if (job.data.empty()) return std::nullopt;
  job.tables = LoadReferenceTables(folders);
  job.items = FillTakeoffList(job.data, TakeoffRules(job.tables));
  CopyBack(job.data, job.items);
  return job;
}

}  // namespace tq
