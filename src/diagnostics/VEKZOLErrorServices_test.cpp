// Tests of the process-wide error list: the composed texts by kind, the
// default solution, the lists filled and emptied together, the getters that
// replace the caller's deque, and the destructor of any instance that
// clears the lists.
#include <vekzol/diagnostics/VEKZOLErrorServices.h>

#include <deque>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLErrorTestSupport.h"

namespace {

using error_test::CountingObject;
using error_test::CountingRelation;
using error_test::FixedTrace;
using error_test::Lines;

std::vector<std::string> Texts(const std::deque<CString>& list) {
  std::vector<std::string> texts;
  for (const CString& text : list) {
    texts.emplace_back(text.GetString());
  }
  return texts;
}

// The composed texts as the service lists them.
std::vector<std::string> ListedTexts() { return Texts(VEKZOLErrorServices::_ListErrMsgs); }

// The composed text of one GenerateError call of kind `type` on fresh lists.
std::string TextOfKind(int type) {
  VEKZOLErrorServices::ClearErrors();
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(static_cast<VEKZOLErrType>(type), "x", "y", nullptr,
                                               nullptr),
            E_FAIL);
  EXPECT_EQ(VEKZOLErrorServices::_ListErrMsgs.size(), 1u);
  return VEKZOLErrorServices::_ListErrMsgs.empty()
             ? ""
             : VEKZOLErrorServices::_ListErrMsgs[0].GetString();
}

class VEKZOLErrorServicesTest : public ::testing::Test {
 protected:
  void SetUp() override { VEKZOLErrorServices::ClearErrors(); }
  void TearDown() override { VEKZOLErrorServices::ClearErrors(); }

  FixedTrace trace;
};

TEST_F(VEKZOLErrorServicesTest, InfoEntryAnswersEFailAndAddsOneEntryToEachList) {
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeInfo, "x", "y", nullptr, nullptr), E_FAIL);
  ASSERT_EQ(VEKZOLErrorServices::_ListErrors.size(), 1u);
  EXPECT_EQ(ListedTexts(), std::vector<std::string>({"Info:\t x. y"}));
  const VEKZOLError* record = VEKZOLErrorServices::_ListErrors[0];
  EXPECT_EQ(record->m_ErrType, ErrTypeInfo);
  EXPECT_STREQ(record->m_Message, "x");
  EXPECT_STREQ(record->m_Solution, "y");
  EXPECT_EQ(record->m_ErrorObject, nullptr);
  EXPECT_EQ(record->m_ErrorRelation, nullptr);
  EXPECT_EQ(trace.Body(), Lines({"Info:\t x. y"}));
}

TEST_F(VEKZOLErrorServicesTest, EachKindComposesItsPrefixMessageDotBlankAndSolution) {
  EXPECT_EQ(TextOfKind(1), "****** ERROR:\t x. y");
  EXPECT_EQ(TextOfKind(2), "****** ERROR:\t x. y");
  EXPECT_EQ(TextOfKind(3), "****** WARNING:\t x. y");
  EXPECT_EQ(TextOfKind(4), "Info:\t x. y");
}

TEST_F(VEKZOLErrorServicesTest, UnknownKindsHaveNoPrefixAndAreRecordedAsGiven) {
  EXPECT_EQ(TextOfKind(0), "x. y");
  EXPECT_EQ(static_cast<int>(VEKZOLErrorServices::_ListErrors[0]->m_ErrType), 0);
  EXPECT_EQ(TextOfKind(5), "x. y");
  EXPECT_EQ(static_cast<int>(VEKZOLErrorServices::_ListErrors[0]->m_ErrType), 5);
  EXPECT_EQ(TextOfKind(-1), "x. y");
  EXPECT_EQ(static_cast<int>(VEKZOLErrorServices::_ListErrors[0]->m_ErrType), -1);
}

TEST_F(VEKZOLErrorServicesTest, TheTwoErrorKindsGiveTheSameTextAndDifferOnlyInTheKind) {
  VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "Bad input", "Fix it", nullptr, nullptr);
  VEKZOLErrorServices::GenerateError(ErrTypeErrorB, "Bad input", "Fix it", nullptr, nullptr);
  EXPECT_EQ(ListedTexts(), std::vector<std::string>({"****** ERROR:\t Bad input. Fix it",
                                                     "****** ERROR:\t Bad input. Fix it"}));
  ASSERT_EQ(VEKZOLErrorServices::_ListErrors.size(), 2u);
  EXPECT_EQ(VEKZOLErrorServices::_ListErrors[0]->m_ErrType, ErrTypeErrorA);
  EXPECT_EQ(VEKZOLErrorServices::_ListErrors[1]->m_ErrType, ErrTypeErrorB);
}

TEST_F(VEKZOLErrorServicesTest, EmptySolutionBecomesTheAdministratorTextInTextAndRecord) {
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "Bad input", "", nullptr, nullptr),
            E_FAIL);
  EXPECT_EQ(ListedTexts(), std::vector<std::string>(
                               {"****** ERROR:\t Bad input. Please Contact Your Administrator"}));
  EXPECT_STREQ(VEKZOLErrorServices::_ListErrors[0]->m_Solution,
               "Please Contact Your Administrator");
  EXPECT_EQ(trace.Body(), Lines({"****** ERROR:\t Bad input. Please Contact Your Administrator"}));
}

TEST_F(VEKZOLErrorServicesTest, EmptyMessageAnswersInvalidArgAndRecordsAndWritesNothing) {
  CountingObject object("OBJ-1");
  VEKZOLErrorServices::GenerateError(ErrTypeWarning, "first", "one", nullptr, nullptr);
  const std::string traceBefore = trace.Body();
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "", "solution", &object, nullptr),
            E_INVALIDARG);
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeInfo, "", "", nullptr, nullptr),
            E_INVALIDARG);
  EXPECT_EQ(VEKZOLErrorServices::_ListErrors.size(), 1u);
  EXPECT_EQ(ListedTexts(), std::vector<std::string>({"****** WARNING:\t first. one"}));
  EXPECT_EQ(trace.Body(), traceBefore);
  EXPECT_EQ(object.idCalls + object.idByReferenceCalls, 0);
}

TEST_F(VEKZOLErrorServicesTest, TextsAreNotTrimmedSoAFinalFullStopDoubles) {
  VEKZOLErrorServices::GenerateError(ErrTypeInfo, " Done. ", "Nothing to do.", nullptr, nullptr);
  VEKZOLErrorServices::GenerateError(ErrTypeInfo, "Saved.", " ", nullptr, nullptr);
  EXPECT_EQ(ListedTexts(),
            std::vector<std::string>({"Info:\t  Done. . Nothing to do.", "Info:\t Saved..  "}));
  EXPECT_STREQ(VEKZOLErrorServices::_ListErrors[1]->m_Solution, " ");
}

TEST_F(VEKZOLErrorServicesTest, EveryCallWritesItsTextAsOneTraceLineInOrder) {
  VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "one", "a", nullptr, nullptr);
  VEKZOLErrorServices::GenerateError(ErrTypeWarning, "two", "b", nullptr, nullptr);
  VEKZOLErrorServices::GenerateError(ErrTypeInfo, "three", "c", nullptr, nullptr);
  VEKZOLErrorServices::GenerateError(static_cast<VEKZOLErrType>(9), "four", "d", nullptr, nullptr);
  EXPECT_EQ(trace.Body(), Lines({"****** ERROR:\t one. a", "****** WARNING:\t two. b",
                                 "Info:\t three. c", "four. d"}));
}

TEST_F(VEKZOLErrorServicesTest, ObjectAndRelationAreBothStoredAndOnlyTheObjectIsAsked) {
  CountingObject object("OBJ-1");
  CountingRelation relation("REL-1");
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeWarning, "x", "y", &object, &relation),
            E_FAIL);
  ASSERT_EQ(VEKZOLErrorServices::_ListErrors.size(), 1u);
  EXPECT_EQ(VEKZOLErrorServices::_ListErrors[0]->m_ErrorObject, &object);
  EXPECT_EQ(VEKZOLErrorServices::_ListErrors[0]->m_ErrorRelation, &relation);
  EXPECT_EQ(ListedTexts(), std::vector<std::string>({"****** WARNING:\t x. y"}));
  EXPECT_EQ(object.idCalls, 1);
  EXPECT_EQ(object.idByReferenceCalls, 0);
  EXPECT_EQ(relation.idCalls, 0);
  EXPECT_EQ(relation.idByReferenceCalls, 0);
}

TEST_F(VEKZOLErrorServicesTest, ARelationAloneIsAskedForItsIdWhichTheTextLeavesOut) {
  CountingRelation relation("REL-1");
  VEKZOLErrorServices::GenerateError(ErrTypeErrorB, "x", "y", nullptr, &relation);
  EXPECT_EQ(relation.idCalls, 1);
  EXPECT_EQ(relation.idByReferenceCalls, 0);
  EXPECT_EQ(VEKZOLErrorServices::_ListErrors[0]->m_ErrorObject, nullptr);
  EXPECT_EQ(VEKZOLErrorServices::_ListErrors[0]->m_ErrorRelation, &relation);
  EXPECT_EQ(ListedTexts(), std::vector<std::string>({"****** ERROR:\t x. y"}));
}

TEST_F(VEKZOLErrorServicesTest, AnUnwritableTraceFileStillLeavesTheEntryInBothLists) {
  trace.FailOpens();
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "x", "y", nullptr, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLErrorServices::_ListErrors.size(), 1u);
  EXPECT_EQ(ListedTexts(), std::vector<std::string>({"****** ERROR:\t x. y"}));
  EXPECT_FALSE(trace.FileExists());
}

TEST_F(VEKZOLErrorServicesTest, GetErrorListOfAnEmptyListAnswersSFalseAndLeavesTheDeque) {
  VEKZOLError outside;
  std::deque<VEKZOLError*> errors = {&outside};
  EXPECT_EQ(VEKZOLErrorServices::GetErrorList(errors), S_FALSE);
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_EQ(errors[0], &outside);
}

TEST_F(VEKZOLErrorServicesTest, GetErrorListReplacesTheCallersDequeWithTheRecords) {
  VEKZOLError outside;
  std::deque<VEKZOLError*> errors = {&outside, &outside};
  VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "one", "a", nullptr, nullptr);
  VEKZOLErrorServices::GenerateError(ErrTypeInfo, "two", "b", nullptr, nullptr);
  EXPECT_EQ(VEKZOLErrorServices::GetErrorList(errors), S_OK);
  EXPECT_EQ(errors, VEKZOLErrorServices::_ListErrors);
  ASSERT_EQ(errors.size(), 2u);
  EXPECT_STREQ(errors[0]->m_Message, "one");
  EXPECT_STREQ(errors[1]->m_Message, "two");
}

TEST_F(VEKZOLErrorServicesTest, GetErrorListAfterClearErrorsAnswersSFalseAndKeepsTheOldPointers) {
  VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "one", "a", nullptr, nullptr);
  std::deque<VEKZOLError*> errors;
  EXPECT_EQ(VEKZOLErrorServices::GetErrorList(errors), S_OK);
  const VEKZOLError* const handedOut = errors[0];
  EXPECT_EQ(VEKZOLErrorServices::ClearErrors(), S_OK);
  EXPECT_EQ(VEKZOLErrorServices::GetErrorList(errors), S_FALSE);
  // The entry now dangles; only its value is compared.
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_EQ(errors[0], handedOut);
}

TEST_F(VEKZOLErrorServicesTest, GetListErrMsgsOfAnEmptyListAnswersSFalseAndLeavesTheDeque) {
  std::deque<CString> messages = {"kept"};
  EXPECT_EQ(VEKZOLErrorServices::GetListErrMsgs(messages), S_FALSE);
  EXPECT_EQ(Texts(messages), std::vector<std::string>({"kept"}));
}

TEST_F(VEKZOLErrorServicesTest, GetListErrMsgsCalledTwiceHoldsTheListOnce) {
  VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "one", "a", nullptr, nullptr);
  VEKZOLErrorServices::GenerateError(ErrTypeWarning, "two", "b", nullptr, nullptr);
  std::deque<CString> messages = {"old"};
  EXPECT_EQ(VEKZOLErrorServices::GetListErrMsgs(messages), S_OK);
  EXPECT_EQ(VEKZOLErrorServices::GetListErrMsgs(messages), S_OK);
  EXPECT_EQ(Texts(messages),
            std::vector<std::string>({"****** ERROR:\t one. a", "****** WARNING:\t two. b"}));
  // Copies: changing the caller's texts leaves the list alone.
  messages[0] = "changed";
  EXPECT_EQ(ListedTexts()[0], "****** ERROR:\t one. a");
}

TEST_F(VEKZOLErrorServicesTest, ClearErrorsEmptiesBothListsAndAnswersSOk) {
  VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "one", "a", nullptr, nullptr);
  VEKZOLErrorServices::GenerateError(ErrTypeInfo, "two", "b", nullptr, nullptr);
  EXPECT_EQ(VEKZOLErrorServices::ClearErrors(), S_OK);
  EXPECT_TRUE(VEKZOLErrorServices::_ListErrors.empty());
  EXPECT_TRUE(VEKZOLErrorServices::_ListErrMsgs.empty());
  EXPECT_EQ(VEKZOLErrorServices::ClearErrors(), S_OK);
  // The trace keeps its lines.
  EXPECT_EQ(trace.Body(), Lines({"****** ERROR:\t one. a", "Info:\t two. b"}));
}

TEST_F(VEKZOLErrorServicesTest, ClearErrorsSkipsNullEntries) {
  VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "one", "a", nullptr, nullptr);
  VEKZOLErrorServices::_ListErrors.push_back(nullptr);
  VEKZOLErrorServices::_ListErrMsgs.push_back("");
  EXPECT_EQ(VEKZOLErrorServices::ClearErrors(), S_OK);
  EXPECT_TRUE(VEKZOLErrorServices::_ListErrors.empty());
  EXPECT_TRUE(VEKZOLErrorServices::_ListErrMsgs.empty());
}

TEST_F(VEKZOLErrorServicesTest, AServiceObjectGoingOutOfScopeEmptiesTheLists) {
  VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "one", "a", nullptr, nullptr);
  {
    VEKZOLErrorServices service;
    VEKZOLErrorServices other;
    other = service;
    EXPECT_EQ(VEKZOLErrorServices::_ListErrors.size(), 1u);
  }
  EXPECT_TRUE(VEKZOLErrorServices::_ListErrors.empty());
  EXPECT_TRUE(VEKZOLErrorServices::_ListErrMsgs.empty());
  std::deque<CString> messages;
  EXPECT_EQ(VEKZOLErrorServices::GetListErrMsgs(messages), S_FALSE);
}

TEST_F(VEKZOLErrorServicesTest, ATemporaryServiceObjectEmptiesTheListsToo) {
  VEKZOLErrorServices::GenerateError(ErrTypeInfo, "one", "a", nullptr, nullptr);
  VEKZOLErrorServices();
  EXPECT_TRUE(VEKZOLErrorServices::_ListErrors.empty());
  EXPECT_TRUE(VEKZOLErrorServices::_ListErrMsgs.empty());
}

}  // namespace
