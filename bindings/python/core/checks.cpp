#include "checks.hpp"

#include "column.hpp"
#include "documents.hpp"
#include "texts.hpp"

namespace campotipo::python {

namespace {

bool view_of(PyObject *text, std::string_view &out) {
  Py_ssize_t bytes = 0;
  const char *data = PyUnicode_AsUTF8AndSize(text, &bytes);
  if (data == nullptr) return false;
  out = {data, static_cast<std::size_t>(bytes)};
  return true;
}

// The document that the first argument names; null and an exception where there is none.
const Document *document_in(PyObject *name) {
  std::string_view text;
  if (PyUnicode_Check(name) == 0) {
    PyErr_SetString(PyExc_TypeError, "the name of a document is a str");
    return nullptr;
  }
  if (!view_of(name, text)) return nullptr;
  const Document *found = document_of(text);
  if (found != nullptr) return found;
  std::string message = "\"" + std::string(text) + "\": no such document; there are";
  for (const Document &document : kDocument) {
    message += (&document == kDocument ? " " : ", ") + std::string(document.name);
  }
  refuse(message);
  return nullptr;
}

bool two(Py_ssize_t count, const char *name) {
  if (count == 2) return true;
  PyErr_Format(PyExc_TypeError, "%s() takes a document and a text or column (%zd given)", name,
               count);
  return false;
}

using Form = std::size_t (*)(const Document &, std::string_view, char *);

// One value, or a column of them with null for what is no such document.
PyObject *texts(PyObject *type, const Document &document, PyObject *value, std::size_t longest,
                Form form) {
  char dest[kDocumentRoom];
  if (PyUnicode_Check(value) != 0) {
    std::string_view text;
    if (!view_of(value, text)) return nullptr;
    const std::size_t length = form(document, text, dest);
    if (length != 0) return PyUnicode_FromStringAndSize(dest, static_cast<Py_ssize_t>(length));
    const Ref shown(PyUnicode_Substring(value, 0, 80));
    if (!shown) return nullptr;
    return refuse_with(PyUnicode_FromFormat("%R has not the length and the characters of %s",
                                            shown.get(), document.name));
  }
  Texts column_in;
  if (!column_in.take(value)) return nullptr;
  std::shared_ptr<ColumnData> made;
  {
    const Unlocked unlocked;
    const bool same = document.shortest == document.longest;
    made = std::make_shared<ColumnData>(column_in.size(), same ? longest : 0, longest);
    column_in.visit([&](std::string_view text) {
      const std::size_t length = text.data() == nullptr ? 0 : form(document, text, dest);
      if (length == 0) {
        made->add_null();
      } else {
        made->add(std::string_view(dest, length));
      }
    });
  }
  return column(type, std::move(made));
}

PyObject *tuple_of(unsigned found) {
  Ref list(PyList_New(0));
  for (int i = 0; list && i < kDocuments; ++i) {
    if ((found >> i & 1) == 0) continue;
    const Ref name(text_of(kDocument[i].name));
    if (!name || PyList_Append(list.get(), name.get()) != 0) return nullptr;
  }
  return list ? PyList_AsTuple(list.get()) : nullptr;
}

}  // namespace

PyObject *valida(PyObject *type, PyObject *const *arguments, Py_ssize_t count) {
  if (!two(count, "valida")) return nullptr;
  const Document *document = document_in(arguments[0]);
  if (document == nullptr) return nullptr;
  if (PyUnicode_Check(arguments[1]) != 0) {
    std::string_view text;
    if (!view_of(arguments[1], text)) return nullptr;
    return PyBool_FromLong(holds(*document, text) ? 1 : 0);
  }
  Texts texts;
  if (!texts.take(arguments[1])) return nullptr;
  std::shared_ptr<ColumnData> made;
  {
    const Unlocked unlocked;
    made = std::make_shared<ColumnData>(texts.size());
    texts.visit([&](std::string_view text) {
      if (text.data() == nullptr) {
        made->add_null();
      } else {
        made->add(holds(*document, text));
      }
    });
  }
  return column(type, std::move(made));
}

PyObject *limpa(PyObject *type, PyObject *const *arguments, Py_ssize_t count) {
  if (!two(count, "limpa")) return nullptr;
  const Document *document = document_in(arguments[0]);
  if (document == nullptr) return nullptr;
  return texts(type, *document, arguments[1], document->longest, clean);
}

PyObject *edita(PyObject *type, PyObject *const *arguments, Py_ssize_t count) {
  if (!two(count, "edita")) return nullptr;
  const Document *document = document_in(arguments[0]);
  if (document == nullptr) return nullptr;
  return texts(type, *document, arguments[1], document->longest_form, usual_form);
}

PyObject *identifica(PyObject *type, PyObject *value) {
  if (PyUnicode_Check(value) != 0) {
    std::string_view text;
    return view_of(value, text) ? tuple_of(identify(text)) : nullptr;
  }
  Texts texts;
  if (!texts.take(value)) return nullptr;
  std::shared_ptr<ColumnData> made;
  {
    const Unlocked unlocked;
    made = std::make_shared<ColumnData>(texts.size(), ColumnData::OfLists());
    texts.visit([&](std::string_view text) {
      if (text.data() == nullptr) return made->add_null();
      const unsigned found = identify(text);
      for (int i = 0; i < kDocuments; ++i) {
        if ((found >> i & 1) != 0) made->add_item(kDocument[i].name);
      }
      made->add_list();
    });
  }
  return column(type, std::move(made));
}

PyObject *documentos() { return tuple_of((1U << kDocuments) - 1); }

}  // namespace campotipo::python
