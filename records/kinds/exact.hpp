#pragma once

#include "kinds/type.hpp"

namespace campotipo::records {

// What a look at a field tells of it, before it is read as a value.
enum class Look {
  kGood,       // it is well formed, and its text gives its bytes back
  kComesBack,  // it does the second if it is the first
  kTry,        // nothing is sure
};

Look look_at(const FieldType &type, const unsigned char *field, const Params &p);

}  // namespace campotipo::records
