#include "kavo/error.h"
#include "kavo/model/element.h"
#include "kavo/writer/file.h"
#include "kavo/writer/writer.h"

namespace kavo::writer {

void writePoint(const Model& model, const Results& results, const std::string& path) {
  const auto& point = results.values[KAVO_PRIMAL];
  if (!point) throw Error(KAVO_NO_RESULT, "the last solve gave no point that could be written");
  writeFile(path, [&](Text& text) {
    (text << "# Objective value = ").number(results.finish.objective) << '\n';
    for (std::size_t i = 0; i < point->size(); ++i) {
      (text << elementName(model, KAVO_COLUMN, i) << ' ').number((*point)[i]) << '\n';
    }
  });
}

}  // namespace kavo::writer
