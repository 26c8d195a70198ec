#include "grb/adder/adder.h"

namespace grb {

tav::util::SourceLocation adderLocation(const std::source_location& at) {
  return {"grb/adder", at.line(), at.column(), at.function_name()};
}

std::shared_ptr<Data> openRecord(const std::weak_ptr<Data>& data, const std::source_location& at) {
  auto record = data.lock();
  if (!record || !record->model->hasModel()) throw tav::opt::SupportException("Adder inactive", adderLocation(at));
  return record;
}

}  // namespace grb
