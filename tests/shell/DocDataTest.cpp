// Per-document data: one record per open drawing, in step with the host's documents.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "shell/DocData.hpp"

using namespace tq;

namespace {

class FakeDocument : public Document {
 public:
  Drawing& drawing() override { throw std::logic_error("not used"); }
  Editor& editor() override { throw std::logic_error("not used"); }
};

class FakeDocuments : public Documents {
 public:
  Document* Current() override { return nullptr; }
  void AddObserver(DocumentObserver& o) override { observers.push_back(&o); }
  void RemoveObserver(DocumentObserver& o) override {
    observers.erase(std::remove(observers.begin(), observers.end(), &o), observers.end());
  }
  void Close(Document& d) {
    for (DocumentObserver* o : std::vector<DocumentObserver*>(observers)) o->DocumentToBeDestroyed(d);
  }
  std::vector<DocumentObserver*> observers;
};

}  // namespace

TEST(DocData, ARecordIsCreatedOnTheFirstRequestAndKeptForItsDocument) {
  FakeDocuments documents;
  AsdkDataManager<CDocData> manager(documents);
  FakeDocument a, b;
  manager.DocData(a).marking.busy = true;
  EXPECT_TRUE(manager.DocData(a).marking.busy);
  EXPECT_FALSE(manager.DocData(b).marking.busy);  // each drawing has its own
  EXPECT_EQ(manager.RecordCount(), 2u);
}

TEST(DocData, ClosingADrawingDropsItsRecord) {
  FakeDocuments documents;
  AsdkDataManager<CDocData> manager(documents);
  FakeDocument a, b;
  manager.DocData(a);
  manager.DocData(b);
  documents.Close(a);
  EXPECT_FALSE(manager.HasRecord(a));
  EXPECT_TRUE(manager.HasRecord(b));
}

TEST(DocData, ClosingADrawingForWhichNoRecordWasEverRequestedDoesNothing) {
  FakeDocuments documents;
  AsdkDataManager<CDocData> manager(documents);
  FakeDocument a, b;
  manager.DocData(a);
  documents.Close(b);
  EXPECT_EQ(manager.RecordCount(), 1u);
  EXPECT_TRUE(manager.HasRecord(a));
}

TEST(DocData, UnloadingRemovesTheObserverSoNoNotificationReachesIt) {
  FakeDocuments documents;
  {
    AsdkDataManager<CDocData> manager(documents);
    ASSERT_EQ(documents.observers.size(), 1u);
  }
  EXPECT_TRUE(documents.observers.empty());
  FakeDocument a;
  documents.Close(a);  // would reach freed code were the observer still registered
}
