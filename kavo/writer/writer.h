#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "kavo/model/model.h"
#include "kavo/result/results.h"

namespace kavo::writer {

// What a .sol file tells beside the results.
struct SolHeader {
  std::string_view message;
  int resultCode = -1;      // < 0: that of the outcome
  int objectiveNumber = 1;  // the objective that was solved, 0: none
};

// What a .sol file repeats of its .nl file.
struct SolShape {
  std::vector<int> options;  // as in Model::amplOptions
  double tolerance = 0;      // as in Model::amplTolerance
  std::size_t rows = 0, columns = 0;
};

// The files of kavo_write_sol, kavo_write_point and kavo_write_json. results may be null for a .sol, which then has no
// values. Throw Error (KAVO_FILE, or KAVO_NO_RESULT for a point file without a point).
void writeSol(const Model& model, const Results* results, const std::string& path, const SolHeader& header);
void writeFailureSol(const SolShape& shape, const std::string& path, const SolHeader& header);
void writePoint(const Model& model, double objective, std::span<const double> point, const std::string& path);
void writePoint(const Model& model, const Results& results, const std::string& path);
void writeJson(const Model& model, const Results& results, const std::vector<std::string>& notes,
               const std::string& path);

// The .sol of point `index` of the pool, which must be there. Its code and the last line of its message are the point's
// own; header.resultCode is not used.
void writePoolSol(const Model& model, const Results& results, std::size_t index, const std::string& path,
                  const SolHeader& header);

}  // namespace kavo::writer
