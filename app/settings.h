#pragma once

#include "app/arguments.h"
#include "app/own_words.h"
#include "app/session.h"

namespace app {

// Gives kavo all settings in the order in which they count: the environment, option files, the words behind the model,
// and what the switches of the command line ask of the link. Returns those that the command line acts on itself.
// Throws Failure.
OwnWords giveSettings(Session& session, const Arguments& arguments);

}  // namespace app
