// Tests of TestClassBase: an empty class with operations that do nothing.
#include <vekzol/objects/TestClassBase.h>

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

namespace {

static_assert(std::is_empty_v<TestClassBase>, "no data");
static_assert(!std::is_polymorphic_v<TestClassBase>, "no virtual operation");
static_assert(!std::has_virtual_destructor_v<TestClassBase>);
static_assert(std::is_default_constructible_v<TestClassBase>);
static_assert(std::is_same_v<void (TestClassBase::*)(), decltype(&TestClassBase::Foobar)>,
              "Foobar: a member with no arguments and no result");
static_assert(std::is_same_v<TestClassBase&, decltype(std::declval<TestClassBase&>() =
                                                          std::declval<const TestClassBase&>())>);

TEST(TestClassBaseTest, AssignmentReturnsTheAssignedObject) {
  TestClassBase first;
  TestClassBase second;
  TestClassBase& result = (first = second);
  EXPECT_EQ(&first, &result);
}

}  // namespace
