#include "values.hpp"

#include <campotipo/bits.h>
#include <campotipo/calendar.h>
#include <campotipo/codes.h>
#include <campotipo/quantities.h>

#include <cstring>
#include <string_view>
#include <vector>

namespace campotipo::python {

namespace {

constexpr Py_ssize_t kMostPositions = 65536;

PyObject *bytes_of(const unsigned char *bytes, std::size_t count) {
  return PyBytes_FromStringAndSize(reinterpret_cast<const char *>(bytes),
                                   static_cast<Py_ssize_t>(count));
}

// "A1 00", for messages; of a long field its beginning.
std::string hex(const unsigned char *bytes, std::size_t count) {
  constexpr const char *kDigits = "0123456789ABCDEF";
  std::string text;
  for (std::size_t i = 0; i < count && i < 32; ++i) {
    text += {kDigits[bytes[i] >> 4], kDigits[bytes[i] & 15]};
  }
  return count > 32 ? text + "..." : text;
}

// The field that the argument is, of `wanted` bytes; null and an exception otherwise.
const unsigned char *field_of(PyObject *object, std::size_t wanted, const char *name) {
  char *data = nullptr;
  Py_ssize_t bytes = 0;
  if (PyBytes_AsStringAndSize(object, &data, &bytes) != 0) return nullptr;
  if (static_cast<std::size_t>(bytes) == wanted) return reinterpret_cast<unsigned char *>(data);
  refuse(std::string(name) + ": a field of " + std::to_string(wanted) +
         " bytes is needed, not of " + std::to_string(bytes));
  return nullptr;
}

bool positions_in_range(Py_ssize_t positions) {
  if (positions >= 1 && positions <= kMostPositions) return true;
  refuse("codalfa: positions: 1 to " + std::to_string(kMostPositions));
  return false;
}

}  // namespace

// The text in capitals, so that no locale has a say; what has no code is told with its place.
PyObject *code_pack(PyObject *, PyObject *arguments) {
  const char *data = nullptr;
  Py_ssize_t bytes = 0;
  Py_ssize_t positions = 0;
  if (PyArg_ParseTuple(arguments, "s#n", &data, &bytes, &positions) == 0) return nullptr;
  if (!positions_in_range(positions)) return nullptr;
  std::string text(data, static_cast<std::size_t>(bytes));
  text.erase(text.find_last_not_of(' ') + 1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] >= 'a' && text[i] <= 'z') text[i] = static_cast<char>(text[i] - 'a' + 'A');
    if (text[i] == '\0' || std::strchr(CODALFA_ALFABETO, text[i]) == nullptr) {
      return refuse("codalfa: byte " + std::to_string(i + 1) +
                    " of the text is outside the alphabet");
    }
  }
  if (text.size() > static_cast<std::size_t>(positions)) {
    return refuse("codalfa: " + std::to_string(text.size()) + " characters do not fit " +
                  std::to_string(positions) + " positions");
  }
  std::vector<unsigned char> field(static_cast<std::size_t>(CODALFA_BYTES(positions)));
  CODALFA_opc_salva(field.data(), text.c_str(), static_cast<int>(positions), 0);
  return bytes_of(field.data(), field.size());
}

PyObject *code_unpack(PyObject *, PyObject *arguments) {
  PyObject *object = nullptr;
  Py_ssize_t positions = 0;
  if (PyArg_ParseTuple(arguments, "On", &object, &positions) == 0) return nullptr;
  if (!positions_in_range(positions)) return nullptr;
  const auto wanted = static_cast<std::size_t>(CODALFA_BYTES(positions));
  const unsigned char *field = field_of(object, wanted, "codalfa");
  if (field == nullptr) return nullptr;
  if (CODALFA_bem_formado(field, static_cast<int>(positions)) == 0) {
    return refuse("codalfa: " + hex(field, wanted) + ": no packed code");
  }
  std::vector<char> text(static_cast<std::size_t>(positions) + 1);
  CODALFA_extrai(text.data(), field, static_cast<int>(positions));
  return text_of(text.data());
}

// Digits, which the caller has made; what the width cannot hold is refused.
PyObject *number_pack(PyObject *, PyObject *arguments) {
  const char *digits = nullptr;
  int width = 0;
  if (PyArg_ParseTuple(arguments, "si", &digits, &width) == 0) return nullptr;
  unsigned char field[ZBINARIO_MAX_WIDTH];
  if (ZBINARIO_converteu_para_binario(field, width, digits) == 0) {
    return refuse("zbinario: a field has 1 to " + std::to_string(ZBINARIO_MAX_WIDTH) + " bytes");
  }
  char back[ZBINARIO_TEXT_SIZE];
  ZBINARIO_converteu_de_binario(back, field, width);
  if (std::string_view(back) != digits) {
    return refuse("zbinario: " + std::string(digits).substr(0, 80) + " does not fit " +
                  std::to_string(width) + " bytes");
  }
  return bytes_of(field, static_cast<std::size_t>(width));
}

PyObject *number_unpack(PyObject *, PyObject *object) {
  char *data = nullptr;
  Py_ssize_t bytes = 0;
  if (PyBytes_AsStringAndSize(object, &data, &bytes) != 0) return nullptr;
  const auto *field = reinterpret_cast<const unsigned char *>(data);
  if (bytes < 1 || bytes > ZBINARIO_MAX_WIDTH) {
    return refuse("zbinario: a field has 1 to " + std::to_string(ZBINARIO_MAX_WIDTH) + " bytes");
  }
  if (ZBINARIO_bem_formado(static_cast<int>(bytes), field) == 0) {
    return refuse("zbinario: " + hex(field, static_cast<std::size_t>(bytes)) + ": no quantity");
  }
  char text[ZBINARIO_TEXT_SIZE];
  ZBINARIO_converteu_de_binario(text, field, static_cast<int>(bytes));
  return text_of(text);
}

PyObject *number_digits(PyObject *, PyObject *width) {
  const long bytes = PyLong_AsLong(width);
  if (bytes == -1 && PyErr_Occurred() != nullptr) return nullptr;
  if (bytes < 1 || bytes > ZBINARIO_MAX_WIDTH) {
    return refuse("zbinario: a field has 1 to " + std::to_string(ZBINARIO_MAX_WIDTH) + " bytes");
  }
  return PyLong_FromLong(ZBINARIO_max_digitos_decimais(static_cast<int>(bytes)));
}

PyObject *date_pack(PyObject *, PyObject *arguments) {
  int format = 0;
  int day = 0;
  int month = 0;
  int year = 0;
  if (PyArg_ParseTuple(arguments, "iiii", &format, &day, &month, &year) == 0) return nullptr;
  unsigned char field[DATAC_BYTES];
  DATAC_fmt_monta(field, format, day, month, year);
  if (day != 0 && (DATAC_valida(field) == 0 || DATAC_dia(field) != day ||
                   DATAC_mes(field) != month || DATAC_ano1(field) != year)) {
    return refuse("datac: the field cannot hold this date");
  }
  return bytes_of(field, sizeof field);
}

// (day, month, year), or None for the date that is absent.
PyObject *date_unpack(PyObject *, PyObject *object) {
  const unsigned char *field = field_of(object, DATAC_BYTES, "datac");
  if (field == nullptr) return nullptr;
  if (DATAC_bem_formado(field) != 0 && DATAC_nao_zero(field) == 0) Py_RETURN_NONE;
  if (DATAC_bem_formado(field) == 0 || DATAC_valida(field) == 0) {
    return refuse("datac: " + hex(field, DATAC_BYTES) + ": no date");
  }
  return Py_BuildValue("(iii)", static_cast<int>(DATAC_dia(field)),
                       static_cast<int>(DATAC_mes(field)), static_cast<int>(DATAC_ano1(field)));
}

// (how, step, day, month, year): how 0 by days, 1 by months to the first of the next where the month
// has no such day, 2 to its last.
PyObject *date_step(PyObject *, PyObject *arguments) {
  int how = 0;
  int step = 0;
  int day = 0;
  int month = 0;
  int year = 0;
  if (PyArg_ParseTuple(arguments, "iiiii", &how, &step, &day, &month, &year) == 0) return nullptr;
  unsigned char field[DATAC_BYTES];
  DATAC_fmt_monta(field, DATAC_FORMATO_COMPACTO, day, month, year);
  if (how == 0) DATAC_avanca_dias(field, step);
  if (how == 1) DATAC_avanca_meses(field, step);
  if (how == 2) DATAC_avanca_meses_dentro(field, step);
  if (DATAC_valida(field) == 0) return refuse("the step leaves the years of a date");
  return Py_BuildValue("(iii)", static_cast<int>(DATAC_dia(field)),
                       static_cast<int>(DATAC_mes(field)), static_cast<int>(DATAC_ano1(field)));
}

// 32 digits, with the dashes of the usual groups or none, in braces or not.
PyObject *guid_parse(PyObject *, PyObject *object) {
  Py_ssize_t bytes = 0;
  const char *data = PyUnicode_AsUTF8AndSize(object, &bytes);
  if (data == nullptr) return nullptr;
  const std::string text(data, static_cast<std::size_t>(bytes));
  unsigned char guid[ZGUID_BYTES];
  ZGUID_parse(guid, text.c_str());
  for (int flags = 0; flags < 8; ++flags) {
    char form[ZGUID_STRING_MAX_SIZE];
    ZGUID_string(form, guid, flags & ~ZGUID_MAIUSCULAS);
    std::string folded = text;
    for (char &c : folded) c = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
    if (folded == form) return bytes_of(guid, sizeof guid);
  }
  return refuse("zguid: \"" + text.substr(0, 80) + "\": no GUID");
}

PyObject *guid_text(PyObject *, PyObject *arguments) {
  PyObject *object = nullptr;
  int flags = 0;
  if (PyArg_ParseTuple(arguments, "Oi", &object, &flags) == 0) return nullptr;
  const unsigned char *guid = field_of(object, ZGUID_BYTES, "zguid");
  if (guid == nullptr) return nullptr;
  char text[ZGUID_STRING_MAX_SIZE];
  ZGUID_string(text, guid, flags & (ZGUID_HIFENS | ZGUID_MAIUSCULAS | ZGUID_CHAVES));
  return text_of(text);
}

PyObject *guid_new(PyObject *, PyObject *) {
  constexpr unsigned char kNone[ZGUID_BYTES] = {};
  unsigned char guid[ZGUID_BYTES];
  ZGUID_gera(guid);
  if (std::memcmp(guid, kNone, sizeof guid) == 0) {
    PyErr_SetString(PyExc_OSError, "the kernel gives no random GUID");
    return nullptr;
  }
  return bytes_of(guid, sizeof guid);
}

}  // namespace campotipo::python
