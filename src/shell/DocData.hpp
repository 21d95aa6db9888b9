#pragma once
// Per-document data: a record for every open drawing, created when first asked for and
// dropped when the drawing closes.
#include <map>

#include "drawing/MarkingState.hpp"
#include "ports/Documents.hpp"

namespace tq {

// What the add-in keeps for one drawing. No workflow reads or writes a field of its own here;
// the marking's guard lives here so that it belongs to the drawing it marks.
struct CDocData {
  MarkingState marking;
};

// Keeps one record per document, in step with the host's documents: it observes them from
// construction to destruction, so no notification reaches it once it is gone.
template <class Data>
class AsdkDataManager : public DocumentObserver {
 public:
  explicit AsdkDataManager(Documents& documents) : documents_(documents) { documents_.AddObserver(*this); }
  ~AsdkDataManager() override { documents_.RemoveObserver(*this); }
  AsdkDataManager(const AsdkDataManager&) = delete;
  AsdkDataManager& operator=(const AsdkDataManager&) = delete;

  // The document's record, default-constructed on the first request.
  Data& DocData(Document& document) { return records_[&document]; }
  bool HasRecord(const Document& document) const { return records_.count(const_cast<Document*>(&document)) > 0; }
  size_t RecordCount() const { return records_.size(); }

  // documentToBeDestroyed: the record goes with its document (nothing when it has none).
  void DocumentToBeDestroyed(Document& document) override { records_.erase(&document); }

 private:
  Documents& documents_;
  std::map<Document*, Data> records_;
};

}  // namespace tq
