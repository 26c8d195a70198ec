#pragma once

#include <string>

#include "app/session.h"

namespace app {

// A table "name value" of a quantity (a kavo_quantity), with a heading; "" when the solve has not given it.
std::string valueTable(const Session& session, int quantity);

// Tables of the sensitivity ranges of variables and rows, with headings; "" when the solve has not given any.
std::string rangeTables(const Session& session);

}  // namespace app
