#pragma once

#include <string>

#include "brel/user_model.h"
#include "kavo/link.h"

// Results of a solve as a text that gives them back to the last bit (docs/plugins.md tells its form).
namespace brel::result {

// What the link has given so far in this solve, and `finish`.
std::string stored(const UserModel& user, const kavo_finish& finish);

// Gives the host what the file holds, and returns its `finish`. Raises tav::UserException when the file cannot be read,
// when it is damaged (with the line), and when it is of another model.
kavo_finish readStored(const UserModel& user, const std::string& path);

}  // namespace brel::result
