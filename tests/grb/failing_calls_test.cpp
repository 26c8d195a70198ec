// Every Gurobi call of a block, made to fail once.
#include <gmock/gmock.h>

#include <functional>

#include "grb/adder/indic_adder.h"
#include "grb/adder/lin_con_adder.h"
#include "grb/adder/quad_con_adder.h"
#include "grb/adder/quad_obj_adder.h"
#include "grb/adder/sos_adder.h"
#include "grb/adder/var_adder.h"
#include "tests/grb/blocks.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

constexpr const char* kLost =
    "Gurobi discarded parts of the model when an earlier call failed; the model must be loaded anew.";

// The message of the error that f raises, empty when there is none.
template <class F>
std::string outcome(const F& f) {
  try {
    f();
  } catch (const tav::Exception& error) {
    return error.message();
  }
  return "";
}

struct Adding {
  const char* what;
  // Adds a block of three elements, each in one call of Gurobi, on which the block has looked once before.
  std::function<void(const std::shared_ptr<Data>&)> add;
  const char* count;  // the attribute that counts such elements
};

const Function kRow{0, {0}, {1}};
const Quadratic kProduct{{0, {0}, {1}}, {0}, {1}, {1}};

const Adding kAddings[]{
    {"linear rows",
     [](const auto& data) { LinConAdder(data).add(functions(data->variableSpace(), {kRow, kRow, kRow})); },
     "NumConstrs"},
    {"quadratic rows",
     [](const auto& data) {
       QuadConAdder(data).add(functions<Quadratic>(data->variableSpace(), {kProduct, kProduct, kProduct}));
     },
     "NumQConstrs"},
    {"sets", [](const auto& data) { SOSAdder(data).add(functions(data->variableSpace(), {kRow, kRow, kRow})); },
     "NumSOS"},
    {"indicators",
     [](const auto& data) {
       IndicAdder(data).add(linkedRows(data->variableSpace(), {kRow, kRow, kRow}, {{2, 3, 2}, {1, 1, 1}}));
     },
     "NumGenConstrs"},
};

int registered(const Data& data) {
  EXPECT_EQ(data.rowStores->sides.size(), static_cast<std::size_t>(data.linearRows.count()));
  return data.linearRows.count() + data.quadraticRows.count() + data.sosSets.count() +
         static_cast<int>(data.generalConstraints.size());
}

struct Loaded : OpenRecord {
  Loaded() {
    VarAdder(data).add(variables({0, 1}, {{0, 0}, {1, 1}}));
    data->model->updateIfPending();
    gurobi->takeCalls();
  }
};

TEST(FailingCalls, ABlockGoesOnOnlyWhenNothingWasLost) {
  for (const Adding& adding : kAddings) {
    for (int nth = 1; nth <= 4; ++nth) {
      SCOPED_TRACE(testing::Message() << adding.what << ", call " << nth);
      Loaded record;
      const auto& data = record.data;
      record.gurobi->failAnyCall(nth, 10001, "Out of memory");
      EXPECT_EQ(messageOf<GurobiException>([&] { adding.add(data); }), "Out of memory");
      ASSERT_FALSE(record.gurobi->failurePending());
      const bool isLost = nth > 2;  // what the first call added was still queued
      EXPECT_EQ(data->isInStepAfterError(), !isLost);
      EXPECT_EQ(outcome([&] { adding.add(data); }), isLost ? kLost : "");
      EXPECT_EQ(outcome([&] { VarAdder(data).add(plainVariables(1)); }), isLost ? kLost : "");
      if (isLost) continue;
      EXPECT_EQ(data->model->getIntAttr(adding.count), 3);
      EXPECT_EQ(registered(*data), 3);
    }
  }
}

// A library that keeps what it had taken before the call that failed; the counts of each kind tell.
TEST(FailingCalls, WhatALibraryKeepsIsRegistered) {
  for (const Adding& adding : kAddings) {
    for (const bool keeps : {true, false}) {
      SCOPED_TRACE(testing::Message() << adding.what << keeps);
      Loaded record;
      record.gurobi->failAnyCall(4, 10001, "Out of memory");
      record.gurobi->scriptAttr(adding.count, keeps ? 2 : 1);
      EXPECT_EQ(messageOf<GurobiException>([&] { adding.add(record.data); }), "Out of memory");
      EXPECT_EQ(record.data->isInStepAfterError(), keeps);
      EXPECT_EQ(registered(*record.data), 2) << "what is lost is told by the record, not by its counts";
    }
  }
}

TEST(FailingCalls, AnObjectiveIsTakenOnceItsProductsAre) {
  const auto add = [](const auto& data) {
    QuadObjAdder(data).add(functions<Quadratic>(data->variableSpace(), {kProduct}));
  };
  for (int nth = 1; nth <= 5; ++nth) {
    SCOPED_TRACE(nth);
    Loaded record;
    record.gurobi->failAnyCall(nth, 10001, "Out of memory");
    const std::string message = outcome([&] { add(record.data); });
    EXPECT_FALSE(record.gurobi->failurePending());
    EXPECT_EQ(record.data->quadraticObjectives.count(), nth <= 3 ? 0 : 1);
    EXPECT_TRUE(record.data->isInStepAfterError());
    if (nth <= 3) add(record.data);
    EXPECT_EQ(message, nth == 4 ? "" : "Out of memory") << "an array of values is not checked";
  }
}

}  // namespace
}  // namespace grb
