// One Gurobi model behind checked calls. Each function is named after the Gurobi function that it calls, whose manual
// page says what the arguments mean; what is written here is what this class adds.
//
// Errors: unless a comment says otherwise, a code other than 0 throws GurobiException, and every function that needs
// the model throws a plain tav::Exception "Requires model to be started first." before `start`.
//
// Pending updates: Gurobi queues changes and lets reads see them only after an update. This class notes that something
// was queued and makes one update just before a scalar read, so callers never ask for one. Bulk reads do not; a caller
// that needs fresh values calls updateIfPending() first.
//
// Names (variables, rows) may be null: Gurobi then makes one. Spans whose meaning is "optional" may be empty.
// One thread at a time, except terminate() and running().
#pragma once

#include <atomic>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "grb/gurobi/env.h"
#include "tav/idx/list.h"

namespace grb {

/// What Gurobi tells about a numeric parameter.
template <typename T>
struct ParamInfo {
  T value{};
  T minimum{};
  T maximum{};
  T defaultValue{};
};

/// What Gurobi tells about a string parameter.
struct StringParamInfo {
  std::string value;
  std::string defaultValue;
};

class GurobiModel {
 public:
  /// With a new environment of that library. No model yet.
  explicit GurobiModel(std::shared_ptr<const Library> library);
  /// With a shared environment. No model yet.
  explicit GurobiModel(std::shared_ptr<GurobiEnv> env);

  // --- Life (model.cpp) ---

  /// Starts the environment if need be and makes an empty model, or reads one from a file whose extension tells the
  /// format. A model that was there is freed. Failure: GurobiException "Model creation failed", nothing changes.
  void start();
  void start(const char* filename);
  /// Replaces the model by an empty one with the same parameters. Without a model: nothing. Failure as of start().
  void clear();

  /// The handle; throws before start(), and GurobiException once an update has run out of memory.
  GRBmodel* model() const {
    if (usable_ == nullptr) [[unlikely]]
      failUnusable();
    return usable_;
  }
  /// Whether start() has succeeded.
  bool hasModel() const noexcept { return model_ != nullptr; }
  const std::shared_ptr<GurobiEnv>& env() const noexcept { return env_; }
  /// The environment that holds the parameters in force: the model's own copy, the base environment before start().
  GRBenv* envInUse() const;
  /// For calls that have no wrapper here, such as GRBcbget inside a callback.
  const Api& api() const noexcept { return *api_; }
  const std::shared_ptr<const Library>& library() const noexcept { return env_->library(); }

  /// Does nothing for the code 0; otherwise throws GurobiException with Gurobi's text for the last failure of this
  /// model, the code and `function` as context.
  void check(int code, std::string_view function) const {
    if (code != 0) [[unlikely]]
      fail(code, function);
  }

  /// A solve, IIS, relaxation or conversion goes on. Stays true when one of them failed. Any thread may ask.
  bool running() const noexcept { return running_.load(std::memory_order_relaxed); }
  /// The model was converted to its fixed version, or to a feasibility relaxation, in place.
  bool fixed() const noexcept { return fixed_; }
  bool relaxed() const noexcept { return relaxed_; }
  /// An update is pending.
  bool dirty() const noexcept { return dirty_; }
  /// Makes the pending update, if there is one. Its result is not checked; but one that runs out of memory leaves a
  /// model that Gurobi cannot bear to be asked anything: every use of it throws from then on, until clear() or start().
  void updateIfPending();

  // --- Building (model_building.cpp); marks an update as pending unless noted ---

  /// One column with entries `values` in the rows `rows` (equal lengths).
  void addVar(std::span<const int> rows, std::span<const double> values, double obj, double lb, double ub, char vtype,
              const char* name);
  /// `count` columns without entries. Every span is empty (Gurobi's default: 0, 0, infinity, 'C', made names) or has
  /// `count` entries.
  void addVars(int count, std::span<const double> obj, std::span<const double> lb, std::span<const double> ub,
               std::span<const char> vtype, std::span<const char* const> names);
  /// One linear row; `columns` and `values` have equal lengths. In the header because large models live here.
  void addConstr(std::span<const int> columns, std::span<const double> values, char sense, double rhs,
                 const char* name) {
    GRBmodel* const handle = model();
    dirty_ = true;
    check(api_->GRBaddconstr(handle, static_cast<int>(columns.size()), const_cast<int*>(columns.data()),
                             const_cast<double*>(values.data()), sense, rhs, name),
          "GRBaddconstr");
  }
  /// One quadratic row: two spans of linear terms, three of quadratic ones.
  void addQConstr(std::span<const int> linColumns, std::span<const double> linValues, std::span<const int> rows,
                  std::span<const int> columns, std::span<const double> values, char sense, double rhs,
                  const char* name);
  /// Quadratic objective terms; the spans have equal lengths.
  void addQpTerms(std::span<const int> rows, std::span<const int> columns, std::span<const double> values);
  /// SOS sets: `types` and `begins` per set, `members` per member, `weights` per member or empty.
  void addSos(std::span<const int> types, std::span<const int> begins, std::span<const int> members,
              std::span<const double> weights);
  /// Coefficients of the matrix; the spans have equal lengths. Does NOT mark an update as pending.
  void xchgCoeffs(std::span<const int> rows, std::span<const int> columns, std::span<const double> values);

  // --- General constraints (model_genconstr.cpp); marks an update as pending, but for addGenConstrNL ---

  void addGenConstrMax(const char* name, int resvar, std::span<const int> vars, double constant);
  void addGenConstrMin(const char* name, int resvar, std::span<const int> vars, double constant);
  void addGenConstrAbs(const char* name, int resvar, int argvar);
  void addGenConstrAnd(const char* name, int resvar, std::span<const int> vars);
  void addGenConstrOr(const char* name, int resvar, std::span<const int> vars);
  /// `which`: 0, 1, 2 or kInfinity.
  void addGenConstrNorm(const char* name, int resvar, std::span<const int> vars, double which);
  /// An expression tree in pre-order; the spans have one entry per node. Does NOT mark an update as pending.
  void addGenConstrNL(const char* name, int resvar, std::span<const int> opcodes, std::span<const double> nodeData,
                      std::span<const int> parents);
  void addGenConstrIndicator(const char* name, int binvar, int binval, std::span<const int> vars,
                             std::span<const double> values, char sense, double rhs);
  /// `options` of all function constraints: such as "FuncPieces=-1 FuncPieceError=0.001", or null.
  /// Poly: coefficients from the highest power to the constant.
  void addGenConstrPoly(const char* name, int xvar, int yvar, std::span<const double> coefficients,
                        const char* options);
  void addGenConstrExp(const char* name, int xvar, int yvar, const char* options);
  void addGenConstrExpA(const char* name, int xvar, int yvar, double base, const char* options);
  void addGenConstrLog(const char* name, int xvar, int yvar, const char* options);
  void addGenConstrLogA(const char* name, int xvar, int yvar, double base, const char* options);
  void addGenConstrLogistic(const char* name, int xvar, int yvar, const char* options);
  void addGenConstrPow(const char* name, int xvar, int yvar, double exponent, const char* options);
  void addGenConstrSin(const char* name, int xvar, int yvar, const char* options);
  void addGenConstrCos(const char* name, int xvar, int yvar, const char* options);
  void addGenConstrTan(const char* name, int xvar, int yvar, const char* options);

  // --- Scalar attributes (model_attr.cpp); reads make the pending update, writes mark one ---

  int getIntAttr(const char* name);
  double getDblAttr(const char* name);
  std::string getStrAttr(const char* name);
  int getIntAttrElement(const char* name, int element);
  double getDblAttrElement(const char* name, int element);
  char getCharAttrElement(const char* name, int element);
  std::string getStrAttrElement(const char* name, int element);
  void setIntAttr(const char* name, int value);
  void setDblAttr(const char* name, double value);
  void setStrAttr(const char* name, const char* value);
  void setIntAttrElement(const char* name, int element, int value);
  void setDblAttrElement(const char* name, int element, double value);
  void setStrAttrElement(const char* name, int element, const char* value);
  /// Whether the attribute can be read now.
  bool isAttrAvailable(const char* name) const;

  // --- Bulk attributes (model_attr.cpp): one value per element of `elements`, in its order. A contiguous list takes
  // Gurobi's array call, any other the list call. Codes are NOT checked (values then stay as they were), no update is
  // made or marked. CheckException when `values` is shorter than `elements`. ---

  void getIntAttrArray(const char* name, const tav::idx::List& elements, std::span<int> values) const;
  void getDblAttrArray(const char* name, const tav::idx::List& elements, std::span<double> values) const;
  void getCharAttrArray(const char* name, const tav::idx::List& elements, std::span<char> values) const;
  void setIntAttrArray(const char* name, const tav::idx::List& elements, std::span<const int> values);
  void setDblAttrArray(const char* name, const tav::idx::List& elements, std::span<const double> values);

  // --- Parameters of envInUse() (model_param.cpp); usable before start(). Reads make the pending update, writes mark
  // one, the rest does neither ---

  int getIntParam(const char* name);
  double getDblParam(const char* name);
  std::string getStrParam(const char* name);
  void setIntParam(const char* name, int value);
  void setDblParam(const char* name, double value);
  void setStrParam(const char* name, const char* value);
  ParamInfo<int> getIntParamInfo(const char* name) const;
  ParamInfo<double> getDblParamInfo(const char* name) const;
  StringParamInfo getStrParamInfo(const char* name) const;
  /// The number of parameters, not a code.
  int getNumParams() const;
  /// The name of parameter 0 <= i < getNumParams().
  std::string getParamName(int i) const;
  /// One of paramtype; kUnknown is no error.
  int getParamType(const char* name) const;
  void readParams(const char* filename);
  void writeParams(const char* filename) const;
  /// Whether Gurobi could use a GPU here.
  bool isGpuSupported() const;

  // --- Solving and around it (model_solve.cpp) ---

  /// Clears the pending update, since the solve makes it. An infeasible model is no error: see the attribute "Status".
  void optimize();
  void computeIIS();
  /// Penalties: per variable, per variable, per row; empty when none of the kind may be relaxed. Makes the pending
  /// update; changes the model in place and sets relaxed(). Returns the relaxation's value.
  double feasRelax(int relaxobjtype, int minrelax, std::span<const double> lbpen, std::span<const double> ubpen,
                   std::span<const double> rhspen);
  /// Changes the model in place and sets fixed(). Gurobi refuses it while changes are queued.
  void convertToFixed();
  /// The base environment checks it.
  void tuneModel();
  /// Puts tuning result i (0 is the best) into the parameters.
  void getTuneResult(int i);
  void write(const char* filename);
  /// Bit w of `wheres` selects callback origin w; a null callback removes it.
  void setCallbackFuncAdv(GurobiCallback callback, void* context, unsigned wheres);
  void setLogCallbackFunc(GurobiLogCallback callback, void* context);
  /// Any thread, also from inside a callback.
  void terminate() const;

 private:
  struct Free {
    const Api* api;
    void operator()(GRBmodel* model) const noexcept { api->GRBfreemodel(model); }
  };

  [[noreturn]] void fail(int code, std::string_view function) const;
  [[noreturn]] void failUnusable() const;
  void install(GRBmodel* made, int code, std::string_view function, const tav::util::SourceLocation& location);
  GRBmodel* changing() {
    GRBmodel* const handle = model();
    dirty_ = true;
    return handle;
  }
  // Runs a call with running() true; when the call fails, the mark stays.
  template <typename Call>
  void runChecked(const Call& call, std::string_view function) {
    running_.store(true, std::memory_order_relaxed);
    check(call(), function);
    running_.store(false, std::memory_order_relaxed);
  }
  GRBmodel* reading() {
    if (usable_ != nullptr) updateIfPending();
    return model();
  }

  std::shared_ptr<GurobiEnv> env_;  // before the model, which must go first
  const Api* api_;
  std::unique_ptr<GRBmodel, Free> model_;
  GRBmodel* usable_ = nullptr;  // the model, unless its update ran out of memory
  std::string updateFailure_;   // Gurobi's text for that
  std::atomic<bool> running_{false};
  bool fixed_ = false;
  bool relaxed_ = false;
  bool dirty_ = false;
};

}  // namespace grb
