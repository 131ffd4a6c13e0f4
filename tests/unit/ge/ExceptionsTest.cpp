// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <exception>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <type_traits>

#include "vesk/ExceptionInfo.h"
#include "vesk/GeEx.h"
#include "vesk/GeVector.h"

namespace {

// The text that a plain std::exception has.
std::string baseText() { return std::exception().what(); }

TEST(ExceptionsTest, TextsAreFixedAndHoldNoPlace) {
  EXPECT_EQ(Vesk::TovException().what(), baseText());
  EXPECT_STREQ(Vesk::TovExWhere("here").what(), "General error");
  EXPECT_STREQ(GeEx::NullDir("here").what(), "Direction should not be Null or Infinity");
  EXPECT_STREQ(GeEx::NullPtr("here").what(), "Pointer to array should not be NULL");
  EXPECT_STREQ(GeEx::DivZero("here").what(), "Division by zero");
  EXPECT_EQ(Vesk::ExceptionInfo("reason", 1).what(), baseText());
}

TEST(ExceptionsTest, ThePlaceStandsInWhereAndIsCopied) {
  const auto original = std::make_unique<GeEx::NullDir>("GeMatrix");
  const GeEx::NullDir copy = *original;
  EXPECT_EQ(original->where, "GeMatrix");
  EXPECT_EQ(copy.where, "GeMatrix");
  EXPECT_EQ(GeEx::NullPtr("GePoint").where, "GePoint");
  EXPECT_EQ(GeEx::DivZero("GeDirect::angleTo").where, "GeDirect::angleTo");
  EXPECT_EQ(Vesk::TovExWhere("").where, "");
}

TEST(ExceptionsTest, MessageAndLevelAreCopied) {
  const Vesk::ExceptionInfo original("line \"60\" not found", Vesk::ExceptionInfo::kUnknownTag);
  const Vesk::ExceptionInfo copy = original;
  EXPECT_EQ(copy.message, "line \"60\" not found");
  EXPECT_EQ(copy.level, 2);
  EXPECT_EQ(Vesk::ExceptionInfo::kFatal, 1);
  EXPECT_TRUE((std::is_same_v<decltype(copy.level), std::int32_t>));
}

TEST(ExceptionsTest, DivisionReportsItsTextAndItsOperator) {
  try {
    (void)(GeVector(1, 2, 3) / 0.0);
    FAIL() << "nothing thrown";
  } catch (const GeEx::DivZero& e) {
    EXPECT_STREQ(e.what(), "Division by zero");
    EXPECT_EQ(e.where, "GeDirect::operator /");
  }
}

TEST(ExceptionsTest, EachIsDerivedFromItsBaseAndCanBeDeletedThroughIt) {
  EXPECT_TRUE((std::is_base_of_v<std::exception, Vesk::TovException>));
  EXPECT_TRUE((std::is_base_of_v<Vesk::TovException, Vesk::TovExWhere>));
  EXPECT_TRUE((std::is_base_of_v<Vesk::TovExWhere, GeEx::NullDir>));
  EXPECT_TRUE((std::is_base_of_v<Vesk::TovExWhere, GeEx::NullPtr>));
  EXPECT_TRUE((std::is_base_of_v<Vesk::TovExWhere, GeEx::DivZero>));
  EXPECT_TRUE((std::is_base_of_v<Vesk::TovException, Vesk::ExceptionInfo>));
  EXPECT_FALSE((std::is_base_of_v<Vesk::TovExWhere, Vesk::ExceptionInfo>));
  EXPECT_TRUE(std::has_virtual_destructor_v<Vesk::TovException>);
}

enum class Handler { kWhere, kTov, kLogic, kStandard };

std::ostream& operator<<(std::ostream& out, Handler handler) {
  return out << static_cast<int>(handler);
}

// The first of two handlers that catches E, before the standard one.
template <class First, Handler kFirst, class E>
Handler caughtBy(const E& exception) {
  try {
    throw exception;
  } catch (const First&) {
    return kFirst;
  } catch (const std::exception&) {
    return Handler::kStandard;
  }
}

template <class E>
Handler byWhere(const E& e) {
  return caughtBy<Vesk::TovExWhere, Handler::kWhere>(e);
}
template <class E>
Handler byTov(const E& e) {
  return caughtBy<Vesk::TovException, Handler::kTov>(e);
}
template <class E>
Handler byLogic(const E& e) {
  return caughtBy<std::logic_error, Handler::kLogic>(e);
}

TEST(ExceptionsTest, AHandlerForWhereCatchesTheThreeKernelClasses) {
  EXPECT_EQ(byWhere(GeEx::NullDir("")), Handler::kWhere);
  EXPECT_EQ(byWhere(GeEx::NullPtr("")), Handler::kWhere);
  EXPECT_EQ(byWhere(GeEx::DivZero("")), Handler::kWhere);
  EXPECT_EQ(byWhere(Vesk::ExceptionInfo("", 1)), Handler::kStandard);
}

TEST(ExceptionsTest, AHandlerForTheRootCatchesAll) {
  EXPECT_EQ(byTov(GeEx::NullDir("")), Handler::kTov);
  EXPECT_EQ(byTov(GeEx::NullPtr("")), Handler::kTov);
  EXPECT_EQ(byTov(GeEx::DivZero("")), Handler::kTov);
  EXPECT_EQ(byTov(Vesk::ExceptionInfo("", 1)), Handler::kTov);
}

TEST(ExceptionsTest, NoneIsALogicError) {
  EXPECT_EQ(byLogic(GeEx::NullDir("")), Handler::kStandard);
  EXPECT_EQ(byLogic(GeEx::NullPtr("")), Handler::kStandard);
  EXPECT_EQ(byLogic(GeEx::DivZero("")), Handler::kStandard);
  EXPECT_EQ(byLogic(Vesk::ExceptionInfo("", 1)), Handler::kStandard);
}

}  // namespace
