#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <vector>

#include "app/session.h"

// Files that Gurobi itself finds, reads and writes, which it does in ways of its own.
namespace app {

// The files that Gurobi may read for the name of a model: that of this name, those with its endings behind, compressed
// ones included, and those that the wildcards * and ? stand for.
std::vector<std::string> modelFiles(const std::string& name);

// A line of a file of parameters. As Gurobi reads them: a name, perhaps an equals sign, a value without blanks.
struct ParameterLine {
  std::string name, value;
  int number;  // from 1
};
// None for a file that cannot be read, or only once.
std::vector<ParameterLine> parameterLines(const std::string& path);
// The last value of a name in any case; "" for one that is not there.
std::string parameterIn(const std::string& path, std::string_view name);

// Throws Failure when Gurobi cannot write a file there, or, of ResultFile, writes none with that ending.
void checkGurobiOutput(const std::string& what, const std::string& path, bool isResult);

// The file of ResultFile. Gurobi does not tell when it has not written it.
class ResultFile {
 public:
  // To be made before the solve. isOfFixed: of the solve of the fixed model.
  ResultFile(std::string path, bool isOfFixed);
  // What to tell when this solve should have written it and has not; "" when all is well.
  std::string lost(const Session& session) const;

 private:
  bool isDue(const Session& session) const;

  std::string path_;
  bool isOfFixed_;
  std::optional<struct stat> before_;
};

}  // namespace app
