#include "app/settings.h"

#include <cstdlib>
#include <string>

#include "app/assignments.h"
#include "app/failure.h"

namespace app {

namespace {

constexpr const char* kOptionsVariable = "grblink_options";

void give(const Session& session, const Assignment& word) {
  check(kavo_set_option(session.model(), word.name.c_str(), word.value.c_str(), word.source, 0));
}

}  // namespace

OwnWords giveSettings(Session& session, const Arguments& arguments) {
  declareOwnWords(session);
  if (const char* list = std::getenv(kOptionsVariable)) {
    for (const Assignment& word : parseList(list, kOptionsVariable)) give(session, word);
  }
  for (const std::string& path : arguments.options) check(kavo_read_options(session.model(), path.c_str()));
  bool secret = false;  // a blank in the value of a secret makes the rest of it a word of its own
  for (const std::string& word : arguments.words) {
    give(session, parseWord(word, secret));
    secret = secret || namesSecret(word);
  }
  OwnWords own = ownWords(session);
  if (arguments.ranges) give(session, {"ranges", "1", "--ranges"});
  if (arguments.statistics) give(session, {"statistics", "1", "--statistics"});
  if (!own.poolStub.empty()) give(session, {"pool", "1", "poolstub"});
  return own;
}

}  // namespace app
