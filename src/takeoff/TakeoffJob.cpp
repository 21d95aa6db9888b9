#include "takeoff/TakeoffJob.hpp"

#include "site/Settings.hpp"

namespace tq {

std::optional<TakeoffJob> TakeoffJob::Open(const Drawing& drawing, const Folders& folders, const std::vector<ObjectId>& sheets) {
  TakeoffJob job;
  job.data = CollectTakeoffRows(drawing, sheets);
  if (job.data.empty()) return std::nullopt;
  job.tables = LoadReferenceTables(folders);
  job.pairing = StdSettings(folders).ReadRegisterToOrigin() ? RowPairing::Origin : RowPairing::Shifted;
  job.items = FillTakeoffList(job.data, TakeoffRules(job.tables));
  CopyBack(job.data, job.items, job.pairing);
  return job;
}

}  // namespace tq
