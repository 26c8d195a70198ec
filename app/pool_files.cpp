#include "app/pool_files.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

#include "app/failure.h"
#include "app/paths.h"
#include "app/summary.h"

namespace app {

std::string writePool(const Session& session, const std::string& stub, bool amplForm) {
  const std::size_t count = session.poolSize();
  for (std::size_t i = 0; i < count; ++i) {
    const std::string path = poolPath(stub, i + 1);
    check(amplForm ? kavo_write_pool_sol(session.model(), i, path.c_str(), poolMessage(session, i).c_str())
                   : kavo_write_pool_point(session.model(), i, path.c_str()));
  }
  const std::string next = poolPath(stub, count + 1);
  std::error_code ignored;
  if (!std::filesystem::exists(next, ignored)) return {};
  return fmt::format("note: the pool has {} points; \"{}\" is from an earlier run\n", count, next);
}

}  // namespace app
