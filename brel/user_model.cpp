#include "brel/user_model.h"

#include "brel/host.h"

namespace brel {

bool UserModel::isBeyondLinear() const {
  const bool isObjectiveBeyond = objective && (objective->expression >= 0 || objective->quadratic >= 0);
  return isObjectiveBeyond || logical.count > 0 || rows.expression != nullptr || rows.quadratic != nullptr ||
         rows.indicator != nullptr;
}

std::string nameOf(const kavo_names& names, std::size_t i) {
  return names.start == nullptr ? std::string() : std::string(names.text + names.start[i]);
}

UserModel userModel(trpRec* host) {
  UserModel user;
  user.host = host;
  checkHost(kavo_link_columns(host, &user.columns));
  checkHost(kavo_link_rows(host, &user.rows));
  checkHost(kavo_link_quadratics(host, &user.quadratics));
  checkHost(kavo_link_sets(host, &user.sets));
  checkHost(kavo_link_logical(host, &user.logical));
  int number = 0;
  checkHost(kavo_link_objective_number(host, &number));
  if (number > 0) {
    checkHost(kavo_link_objective(host, static_cast<std::size_t>(number) - 1, &user.objective.emplace()));
  }
  return user;
}

}  // namespace brel
