#include <functional>
#include <limits>

#include "tav/attr/lib/list_container.h"
#include "tav/attr/lib/optional_item.h"
#include "tav/attr/lib/range_info.h"
#include "tav/attr/view/const_item.h"
#include "tav/attr/view/single_item_container.h"
#include "tav/attr/view/transform_container.h"
#include "tav/attr/view/transform_item.h"
#include "tav/attr/view/with_info_item.h"
#include "tests/tav/thrown.h"

namespace attr = tav::attr;
using tav::CheckException;
using tav::idx::lib::Range;
using Doubles = std::vector<double>;
using Ints = std::vector<int>;
using Size = unsigned long long;
using IntInfo = attr::lib::RangeInfo<int>;
using DoubleInfo = attr::lib::RangeInfo<double>;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

namespace {

attr::Item<int> optionalInt(std::optional<int> defaultValue = std::nullopt) {
  return attr::Item<int>::make<attr::lib::OptionalItem<int>>(defaultValue);
}

struct ThreeSolutions final : attr::AbstractItem<int> {
  bool hasSolution(int solution) const override { return solution >= 0 && solution < 3; }
  int solutionCount() const override { return 3; }
  int get(int solution) const override { return 10 + solution; }
};

// Values beyond 100 stand for infinity.
struct Limited {
  using Inner = double;
  using Outer = double;
  static double read(const double& value) { return value == 100 ? kInf : value; }
  static double write(const double& value) { return value; }
  static std::optional<double> convert(const double& value) { return std::min(value, 100.0); }
};

IntInfo rangeOf(std::optional<int> def, std::optional<int> lower, std::optional<int> upper) {
  return {"iis", 1, true, def, lower, upper, std::nullopt, "find a conflict"};
}

}  // namespace

TEST(OptionalItemTest, UnsetReadsAsDefaultOrZero) {
  const auto plain = optionalInt();
  EXPECT_EQ(plain.get(), 0);
  EXPECT_FALSE(plain.hasDefault());
  EXPECT_EQ(thrown<attr::Exception>([&] { plain.getDefault(); }).context(),
            "int __cdecl tav::attr::Item<int>::getDefault(void) const");
  const auto withDefault = optionalInt(-1);
  EXPECT_EQ(withDefault.get(), -1);
  EXPECT_EQ(withDefault.getDefault(), -1);
  withDefault.set(-1);
  EXPECT_TRUE(static_cast<const attr::lib::OptionalItem<int>&>(*withDefault.pointer()).isSet());
  withDefault.set(4);
  EXPECT_EQ(withDefault.getAll(), Ints{4});
  withDefault.reset();
  EXPECT_EQ(withDefault.get(), -1);
  EXPECT_EQ(attr::Item<std::string>::make<attr::lib::OptionalItem<std::string>>().get(), "");
}

TEST(ItemTest, WhatIsNotOverriddenIsRefusedByItsSignature) {
  const auto item = attr::Item<int>::make<ThreeSolutions>();
  struct Case {
    std::function<void()> call;
    const char* signature;
  };
  const Case cases[] = {
      {[&] { item.set(1); }, "void __cdecl tav::attr::AbstractItem<int>::set(const int &,int)"},
      {[&] { item.reset(); }, "void __cdecl tav::attr::AbstractBaseItem::reset(void)"},
      {[&] { item.pointer()->getDefault(); }, "int __cdecl tav::attr::AbstractItem<int>::getDefault(void) const"},
      {[&] { attr::Item<double>().getDefault(); }, "double __cdecl tav::attr::Item<double>::getDefault(void) const"},
      {[&] { attr::view::ConstItem<attr::Item<int>>(optionalInt()).set(1, 0); },
       "void __cdecl tav::attr::AbstractItem<int>::set(const int &,int)"},
  };
  for (const auto& c : cases) EXPECT_EQ(thrown<attr::Exception>(c.call).context(), c.signature);
  EXPECT_EQ(thrown([&] { item.set(1); }).location().file(), "tav/attr/abstract_item");
  EXPECT_EQ(item.getAll(), (Ints{10, 11, 12}));
  const attr::BaseItem base = item;
  EXPECT_EQ(base.as<int>().get(2), 12);
  EXPECT_FALSE(base.as<double>());
  EXPECT_EQ(attr::BaseItem().solutionCount(), 0);
  EXPECT_TRUE(attr::Item<int>().getAll().empty());
}

TEST(ViewTest, ACountOverANumber) {
  using Cast = attr::transform::NumCast<int, Size>;
  const auto inner = optionalInt(5);
  const auto count = attr::Item<Size>::make<attr::view::TransformItem<attr::Item<int>, Cast>>(inner);
  EXPECT_EQ(count.getDefault(), 5U);
  count.set(7);
  EXPECT_EQ(inner.get(), 7);
  EXPECT_EQ(thrown([&] { count.set(2147483648); }).tag(), "Cast Error");
  EXPECT_EQ(inner.get(), 7);
  inner.set(-1);
  EXPECT_EQ(thrown([&] { count.get(); }).tag(), "Cast Error");
}

TEST(ViewTest, TransformsBothWaysAndConverts) {
  using Negated = attr::view::TransformContainer<attr::Container<double>, attr::transform::Negate>;
  const auto inner = attr::Container<double>::make<attr::lib::ListContainer<double>>(Doubles{1, -2, 100});
  const auto negated = attr::Container<double>::make<Negated>(inner);
  EXPECT_EQ(negated.getAll(), (Doubles{-1, 2, -100}));
  negated.set(Range(0, 2), Doubles{4, 5});
  EXPECT_EQ(inner.getAll(), (Doubles{-4, -5, 100}));
  Doubles wide = {0, 0, 0, 77};
  negated.getAll(wide);
  EXPECT_EQ(wide, (Doubles{4, 5, -100, 77})) << "only what was read is transformed";
  using LimitedView = attr::view::TransformContainer<attr::Container<double>, Limited>;
  const auto limited = attr::Container<double>::make<LimitedView>(inner);
  EXPECT_EQ(limited.get(2), kInf);
  EXPECT_EQ(limited.toOptional(kInf), 100);
  limited.setAll(Doubles{1, 2, 300});
  EXPECT_EQ(inner.get(2), 300) << "writes hand the values on as they are";
  EXPECT_EQ(negated.toOptional(3), 3) << "without a conversion of its own";
}

TEST(ViewTest, OneItemAsAContainer) {
  const auto item = optionalInt();
  const auto container = attr::Container<int>::make<attr::view::SingleItemContainer<attr::Item<int>>>(item);
  container.set(Range(0, 1), Ints{8});
  EXPECT_EQ(item.get(), 8);
  EXPECT_EQ(container.getAll(), Ints{8});
  EXPECT_THROW(container.get(1), CheckException);
  EXPECT_THROW(container.set(Range(0, 2), Ints{1, 2}), CheckException);
  EXPECT_EQ(item.get(), 8);
}

TEST(ViewTest, AnItemWithItsDescription) {
  using View = attr::view::WithInfoItem<attr::Item<int>>;
  const auto info = std::make_shared<const IntInfo>(rangeOf(2, 0, 5));
  const auto item = attr::Item<int>::make<View>(optionalInt(), info);
  EXPECT_EQ(item.getDefault(), 2);
  EXPECT_EQ(attr::BaseItem(item).info()->name(), "iis");
  item.set(4);
  item.reset();
  EXPECT_EQ(item.get(), 0) << "an item that can reset itself does so";
  const auto readOnly = attr::Item<int>::make<View>(attr::Item<int>::make<ThreeSolutions>(), info);
  EXPECT_FALSE(readOnly.isResettable());
  EXPECT_THROW(readOnly.reset(), attr::Exception);
}

TEST(ViewTest, ValuesThatTheDescriptionDoesNotAcceptStayOutside) {
  const auto info = std::make_shared<const IntInfo>(rangeOf(2, 0, 5));
  const auto plain = optionalInt(-7);
  using View = attr::view::WithInfoItem<attr::Item<int>>;
  const auto own = std::make_shared<attr::lib::OptionalItem<int>>(info);
  for (const auto& item : {attr::Item<int>::make<View>(plain, info), attr::Item<int>(own)}) {
    item.set(5);
    EXPECT_EQ(messageOf<CheckException>([&] { item.set(6); }), "'iis' (which is 6) must be less or equal to 5.");
    EXPECT_EQ(messageOf<CheckException>([&] { item.set(-1); }), "'iis' (which is -1) must be greater or equal to 0.");
    EXPECT_EQ(item.get(), 5);
  }
  EXPECT_EQ(plain.get(), 5);
  EXPECT_EQ(own->info(), info);
  own->reset();
  EXPECT_EQ(own->get(0), 2);
  EXPECT_FALSE(own->isSet());
}

TEST(InfoTest, RangesAreCheckedWhenMade) {
  struct Case {
    std::function<void()> make;
    const char* message;
  };
  const auto make = [](std::optional<double> def, std::optional<double> lower, std::optional<double> upper) {
    return [=] { DoubleInfo("x", 1, true, def, lower, upper, std::nullopt, ""); };
  };
  const Case cases[] = {
      {[] { rangeOf(std::nullopt, 5, 3); }, "'lower_bound' (which is 5) must be less or equal to 3."},
      {[] { rangeOf(6, 0, 5); }, "'default_value' (which is 6) must be less or equal to 5."},
      {make(-1, 0, std::nullopt), "'default_value' (which is -1) must be greater or equal to 0."},
      {make(kNaN, 0, 1), "'default_value' (which is nan) must be greater or equal to 0."},
      {make(std::nullopt, kNaN, 1), "'lower_bound' (which is nan) must be less or equal to 1."},
  };
  for (const auto& c : cases) {
    const auto error = thrown<CheckException>(c.make);
    EXPECT_EQ(error.message(), c.message);
    EXPECT_EQ(error.location().file(), "tav/attr/lib/range_info");
  }
  EXPECT_NO_THROW(rangeOf(5, 5, 5));
  EXPECT_NO_THROW(rangeOf(std::nullopt, 5, 5));
}

TEST(InfoTest, ClampsIntoTheRange) {
  EXPECT_EQ(rangeOf(0, 0, 5).clamp(7), 5);
  EXPECT_EQ(rangeOf(0, 0, 5).clamp(-7), 0);
  EXPECT_EQ(rangeOf(0, std::nullopt, 5).clamp(std::numeric_limits<int>::min()), std::numeric_limits<int>::min());
  const DoubleInfo wide("x", 1, true, 0, -1e30, 1e30, std::nullopt, "");
  EXPECT_EQ(wide.clamp(-kInf), -1e30);
  EXPECT_EQ(wide.clamp(1e30), 1e30);
  EXPECT_FALSE(wide.accepts(kNaN));
  EXPECT_FALSE(wide.accepts(1.1e30));
  EXPECT_TRUE(wide.accepts(-1e30));
}

TEST(InfoTest, TellsWhichPropertiesSayNothing) {
  const DoubleInfo nothing("", std::nullopt, false, std::nullopt, std::nullopt, kInf, std::nullopt, "");
  const DoubleInfo everything("x", 0, true, 1, 0, 2, 7, "help");
  for (const char* property : {"name", "ref", "n_max", "s_set", "doc", "def", "lo", "up"}) {
    EXPECT_TRUE(nothing.hasProperty(property)) << property;
    EXPECT_TRUE(nothing.isDefaultProperty(property)) << property;
    EXPECT_FALSE(everything.isDefaultProperty(property)) << property;
  }
  EXPECT_TRUE(nothing.isTrivial());
  EXPECT_FALSE(DoubleInfo("", std::nullopt, false, std::nullopt, 0, std::nullopt, std::nullopt, "").isTrivial());
  EXPECT_FALSE(DoubleInfo("", std::nullopt, true, std::nullopt, std::nullopt, kInf, std::nullopt, "").isTrivial());
  EXPECT_TRUE(rangeOf(0, std::numeric_limits<int>::min(), std::nullopt).isDefaultProperty("lo"));
  const attr::lib::Info<std::string> text("readparams", 1, true, std::nullopt, std::nullopt, "");
  EXPECT_FALSE(text.hasProperty("lo"));
  EXPECT_THROW(text.getDefault(), attr::Exception);
  EXPECT_EQ(everything.maxCount(), 1);
  EXPECT_EQ(everything.countLimit(), 1) << "a limit below 2 is 1";
  EXPECT_TRUE(everything.isSet());
  EXPECT_EQ(nothing.countLimit(), std::numeric_limits<int>::max());
}
