#include "grb/result/std_model_attributes.h"

#include <array>

#include "grb/gurobi/callback_constants.h"
#include "grb/result/attrib.h"
#include "grb/result/solution_status.h"
#include "grb/result/sources.h"
#include "grb/result/transforms.h"
#include "tav/attr/transform.h"
#include "tav/attr/view/const_item.h"
#include "tav/opt/quantities.h"

namespace grb {
namespace {

using Key = tav::opt::ModelAttribute;
using Model = std::weak_ptr<GurobiModel>;
using CountOfDouble = tav::attr::transform::NumCast<double, unsigned long long>;
using CountOfInt = tav::attr::transform::NumCast<int, unsigned long long>;

// Names by number, null where nothing is provided.
constexpr std::array<const char*, Key::count> kNames{
    "name",     nullptr,   "status", "iteration limit", "iterations",   "node limit", "nodes", "time limit",
    "run time", "threads", nullptr,  "relative gap",    "absolute gap", "cutoff",     nullptr};

template <class T>
std::shared_ptr<Attrib<kParameter, T>> parameter(const Model& model, const char* name) {
  return std::make_shared<Attrib<kParameter, T>>(model, name);
}

template <class T>
std::shared_ptr<Attrib<kModelAttribute, T>> attribute(const Model& model, const char* name) {
  return std::make_shared<Attrib<kModelAttribute, T>>(model, name);
}

template <class T>
tav::attr::BaseItem readOnly(std::shared_ptr<Attrib<kModelAttribute, T>> item) {
  using Item = tav::attr::Item<T>;
  return std::make_shared<tav::attr::view::ConstItem<Item>>(Item(std::move(item)));
}

}  // namespace

StdModelAttributes::StdModelAttributes(const Data& data, std::optional<Event> event)
    : model_(data.model), source_(callbackSource(data)), status_(data.outcome.status), event_(event) {}

int StdModelAttributes::count() const {
  int provided = 0;
  for (int key = 0; key < Key::count; ++key) provided += has(key) ? 1 : 0;
  return provided;
}

std::vector<int> StdModelAttributes::keys() const {
  std::vector<int> result;
  for (int key = 0; key < Key::count; ++key) {
    if (has(key)) result.push_back(key);
  }
  return result;
}

std::string StdModelAttributes::name(int key) const { return has(key) ? kNames[static_cast<std::size_t>(key)] : ""; }

bool StdModelAttributes::has(int key) const {
  if (!event_ || key < 0 || key >= Key::count) return false;
  if (*event_ != Event::none) return key == Key::status || key == Key::nodes;
  return kNames[static_cast<std::size_t>(key)] != nullptr;
}

tav::attr::BaseItem StdModelAttributes::get(int key) const {
  if (!has(key)) return empty();
  return *event_ == Event::none ? ofModel(key) : ofEvent(key);
}

tav::attr::BaseItem StdModelAttributes::ofModel(int key) const {
  switch (key) {
    case Key::name:
      return readOnly(attribute<std::string>(model_, "ModelName"));
    case Key::status:
      return std::make_shared<SolutionStatus>(model_, status_);
    case Key::iterationLimit:
      return transformed<CountOfDouble>(parameter<double>(model_, "IterationLimit"));
    case Key::iterations:
      return transformed<transform::DoubleToSize>(attribute<double>(model_, "IterCount"));
    case Key::nodeLimit:
      return transformed<CountOfDouble>(parameter<double>(model_, "NodeLimit"));
    case Key::nodes:
      return transformed<transform::DoubleToSize>(attribute<double>(model_, "NodeCount"));
    case Key::timeLimit:
      return parameter<double>(model_, "TimeLimit");
    case Key::runTime:
      return readOnly(attribute<double>(model_, "Runtime"));
    case Key::threads:
      return transformed<CountOfInt>(parameter<int>(model_, "Threads"));
    case Key::relativeGap:
      return parameter<double>(model_, "MIPGap");
    case Key::absoluteGap:
      return parameter<double>(model_, "MIPGapAbs");
    default:
      return parameter<double>(model_, "Cutoff");
  }
}

tav::attr::BaseItem StdModelAttributes::ofEvent(int key) const {
  if (key == Key::status) return std::make_shared<CallbackSolutionStatus>(source_);
  const bool atNode = *event_ == Event::node;
  return transformed<transform::DoubleToSize>(std::make_shared<CallbackAttrib<double>>(
      source_, atNode ? where::kMipNode : where::kMipSol, atNode ? what::kMipNodeNodCnt : what::kMipSolNodCnt));
}

}  // namespace grb
