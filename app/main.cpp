#include <cstdlib>
#include <exception>

#include "app/arguments.h"
#include "app/failure.h"
#include "app/information.h"
#include "app/output.h"
#include "app/run.h"
#include "app/signals.h"

int main(int count, char** words) {
  app::blockSignals();
  app::holdStandardStreams();
  try {
    const app::Arguments arguments = app::parseArguments(count, words);
    return arguments.action == app::Action::solve ? app::run(arguments) : app::inform(arguments);
  } catch (const app::Failure& failure) {
    const char* model = app::amplModel(count, words);
    if (model != nullptr && app::answerFailure(model, failure)) return EXIT_SUCCESS;
    app::printError(failure.what());
    return failure.exitCode();
  } catch (const std::exception& error) {
    app::printError(error.what());
    return app::kExitFailure;
  }
}
