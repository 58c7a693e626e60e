#pragma once

namespace campotipo::records {

struct ReadyText {
  const char *name;
  const char *text;
};

// The layouts of the folder layouts/, in the order of their names; one without a name is behind the
// last. The build makes it.
const ReadyText *ready_texts();

}  // namespace campotipo::records
