#include "grb/adder/lin_obj_adder.h"

#include "grb/adder/block_reading.h"
#include "grb/adder/domain_types.h"
#include "grb/adder/linear_functions.h"
#include "grb/adder/objective_terms.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace grb {
namespace {

using tav::opt::ObjectiveQuantity;

// What a block may carry per objective for models with several, in its own group.
struct MultiObjective {
  std::vector<double> weight, absoluteTolerance, relativeTolerance;
  std::vector<int> priority;

  explicit MultiObjective(const tav::attr::ContainerDict& own)
      : weight(readGiven<double>(own.get("weight"), 1.0)),
        absoluteTolerance(readGiven<double>(own.get("abstol"), 0.0)),
        relativeTolerance(readGiven<double>(own.get("reltol"), 0.0)),
        priority(readGiven<int>(own.get("priority"), 0)) {}

  template <class T>
  static T at(const std::vector<T>& values, std::size_t i, T otherwise) {
    return values.empty() ? otherwise : values[i];
  }

  // Tolerances that are not given are 0, which replaces Gurobi's own default.
  void write(GurobiModel& model, std::size_t i, double sign) const {
    model.setDblAttr("ObjNWeight", sign * at(weight, i, 1.0));
    model.setIntAttr("ObjNPriority", at(priority, i, 0));
    model.setDblAttr("ObjNAbsTol", at(absoluteTolerance, i, 0.0));
    model.setDblAttr("ObjNRelTol", at(relativeTolerance, i, 0.0));
  }
};

int modelSense(Data& data, int sense) {
  if (data.hasObjective()) return data.model->getIntAttr("ModelSense");
  data.model->setIntAttr("ModelSense", sense);
  return sense;
}

}  // namespace

tav::idx::List LinObjAdder::add(const tav::opt::ConstraintContainer& block) {
  const auto data = openRecord(record());
  const auto standard = block.group(tav::opt::tag::kConstraint);
  const int count = elementCount(standard);
  if (count <= 0) return {};
  if (data->quadraticObjectives.count() > 0 || data->nonlinearObjectives.count() > 0) refuseMultipleObjectives();
  const auto senses = readTypes<objTypeToGurobi>(standard.get(ObjectiveQuantity::sense), count);
  const LinearFunctions functions(standard.get(ObjectiveQuantity::function), count, *data);
  const auto own = block.group(kOwnGroup);
  requireCounts(own, count);
  const MultiObjective multi(own);

  const LockedModel locked(*data);
  GurobiModel& model = *data->model;
  const int sense = modelSense(*data, senses.front());
  const int before = data->linearObjectives.count();
  const bool isMulti = before + count > 1;
  if (isMulti) {
    model.setIntAttr("NumObj", before + count);
    // What tells the objectives apart is the user's again before the solve.
    data->beforeProcedure.emplace("objnumber", model.getIntParamInfo("ObjNumber").value);
  }
  functions.forEach([&](int i, const LinearTerms& terms) {
    const auto k = static_cast<std::size_t>(i);
    if (isMulti) {
      model.setIntParam("ObjNumber", before + i);
      multi.write(model, k, senses[k] == sense ? 1.0 : -1.0);
    }
    writeCoefficients(model, isMulti ? "ObjN" : "Obj", terms);
    model.setDblAttr(isMulti ? "ObjNCon" : "ObjCon", terms.constant);
  });
  return data->linearObjectives.add(count);
}

}  // namespace grb
