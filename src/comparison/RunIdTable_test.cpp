// The table of the ids a run recorded: found through the mark on the
// vertex, and not found where the mark is another table's or points past
// the end, so the run then asks the vertex itself.
#include "comparison/RunIdTable.h"

#include <gtest/gtest.h>

#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/platform/CString.h>

namespace {

using vekzol::comparison::RunIdTable;

TEST(RunIdTableTest, ARecordedIdIsFoundThroughItsVertexAndItsPosition) {
  VEKZOLGraphVertex a(nullptr);
  VEKZOLGraphVertex b(nullptr);
  RunIdTable table(3);
  EXPECT_EQ(CString("A"), table.Record(0, &a, CString("A")));
  table.Record(2, &b, CString("B"));
  ASSERT_NE(nullptr, table.Find(&a));
  EXPECT_EQ(CString("A"), *table.Find(&a));
  ASSERT_NE(nullptr, table.Find(&b));
  EXPECT_EQ(CString("B"), *table.Find(&b));
  EXPECT_EQ(CString("B"), table.At(2));
  EXPECT_EQ(CString(""), table.At(1));
}

TEST(RunIdTableTest, AVertexNeverRecordedIsNotFound) {
  VEKZOLGraphVertex recorded(nullptr);
  VEKZOLGraphVertex other(nullptr);
  RunIdTable table(2);
  table.Record(0, &recorded, CString("R"));
  // A new vertex's mark is position 0, where another vertex stands.
  EXPECT_EQ(nullptr, table.Find(&other));
  RunIdTable empty(0);
  EXPECT_EQ(nullptr, empty.Find(&recorded));
}

TEST(RunIdTableTest, AVertexRecordedSinceByAnotherTableIsNotFoundWhereItsMarkNowPoints) {
  VEKZOLGraphVertex shared(nullptr);
  VEKZOLGraphVertex first(nullptr);
  RunIdTable older(3);
  RunIdTable newer(3);
  older.Record(0, &first, CString("F"));
  older.Record(1, &shared, CString("S"));
  newer.Record(2, &shared, CString("S"));
  // The mark now says 2, where the older table has nothing.
  EXPECT_EQ(nullptr, older.Find(&shared));
  ASSERT_NE(nullptr, newer.Find(&shared));
  EXPECT_EQ(CString("S"), *newer.Find(&shared));
  // Recorded again, it is found again.
  older.Record(1, &shared, CString("S"));
  ASSERT_NE(nullptr, older.Find(&shared));
  EXPECT_EQ(nullptr, newer.Find(&shared));
}

TEST(RunIdTableTest, AMarkPastTheEndOfATableIsNotFound) {
  VEKZOLGraphVertex vertex(nullptr);
  RunIdTable large(10);
  RunIdTable small(2);
  large.Record(9, &vertex, CString("V"));
  EXPECT_EQ(nullptr, small.Find(&vertex));
  EXPECT_EQ(nullptr, small.PlaceOf(&vertex));
  EXPECT_NE(nullptr, large.PlaceOf(&vertex));
}

TEST(RunIdTableTest, RecordingTakesTheIdsTextWithoutCopyingIt) {
  VEKZOLGraphVertex vertex(nullptr);
  CString id("0123456789-0123456789-0123456789-0123456");
  const char* text = id.GetString();
  RunIdTable table(1);
  CString answer = id;
  EXPECT_EQ(text, table.Record(0, &vertex, std::move(answer)).GetString());
}

}  // namespace
