#include "kavo/error.h"
#include "kavo/writer/element_names.h"
#include "kavo/writer/file.h"
#include "kavo/writer/writer.h"

namespace kavo::writer {

void writePoint(const Model& model, double objective, std::span<const double> point, const std::string& path) {
  writeFile(path, [&](Text& text) {
    ElementNames names(model, KAVO_COLUMN);
    (text << "# Objective value = ").number(objective == 0 ? 0 : objective) << '\n';
    for (std::size_t i = 0; i < point.size(); ++i) {
      (text << names.at(i) << ' ').number(point[i]) << '\n';
    }
  });
}

void writePoint(const Model& model, const Results& results, const std::string& path) {
  const Numbers& point = results.values[KAVO_PRIMAL];
  if (!point) throw Error(KAVO_NO_RESULT, "the last solve gave no point that could be written");
  writePoint(model, results.finish.objective, *point, path);
}

}  // namespace kavo::writer
