#include "store/python.hpp"

#include "module/handle_proxy.hpp"

namespace mox {

namespace {

PyObject* interned_this = nullptr;
PyTypeObject* shared_type = nullptr;

proxy_object* self_of(PyObject* object) noexcept { return reinterpret_cast<proxy_object*>(object); }

int traverse(PyObject* object, visitproc visit, void* arg) {
    Py_VISIT(self_of(object)->next);
    return 0;
}

int clear(PyObject* object) {
    Py_CLEAR(self_of(object)->next);
    return 0;
}

void deallocate(PyObject* object) {
    PyObject_GC_UnTrack(object);
    // Proxies may be chained without limit; the trash can keeps a long chain from exhausting the
    // stack.
    Py_TRASHCAN_BEGIN(object, deallocate) auto* self = self_of(object);
    if (self->owns && self->wrapped)
        self->kind->destroy(self->wrapped);
    Py_CLEAR(self->next);
    Py_TYPE(object)->tp_free(object);
    Py_TRASHCAN_END
}

PyObject* represent(PyObject* object) {
    const auto* self = self_of(object);
    if (!self->wrapped)
        return PyUnicode_FromFormat("<Swig Object of type '%s' at 0x0>", self->kind->name);
    return PyUnicode_FromFormat("<Swig Object of type '%s' at %p>", self->kind->name,
                                self->wrapped);
}

PyObject* disown(PyObject* object, PyObject* /*unused*/) {
    self_of(object)->owns = false;
    Py_RETURN_NONE;
}

PyObject* acquire(PyObject* object, PyObject* /*unused*/) {
    self_of(object)->owns = true;
    Py_RETURN_NONE;
}

PyObject* own(PyObject* object, PyObject* const* arguments, Py_ssize_t count) {
    if (count > 1)
        return PyErr_Format(PyExc_TypeError, "own expected at most 1 arguments, got %zd", count);
    const bool owned = self_of(object)->owns;
    if (count == 1) {
        const int wanted = PyObject_IsTrue(arguments[0]);
        if (wanted < 0)
            return nullptr;
        self_of(object)->owns = wanted != 0;
    }
    return PyBool_FromLong(owned);
}

PyObject* append(PyObject* object, PyObject* other) {
    if (!Py_IS_TYPE(other, proxy_type())) {
        PyErr_SetString(PyExc_TypeError, "Attempt to append a non SwigPyObject");
        return nullptr;
    }
    Py_XSETREF(self_of(object)->next, Py_NewRef(other));
    Py_RETURN_NONE;
}

PyObject* next(PyObject* object, PyObject* /*unused*/) {
    PyObject* following = self_of(object)->next;
    return Py_NewRef(following ? following : Py_None);
}

PyMethodDef methods[] = {
    {"disown", disown, METH_NOARGS, "releases ownership of the pointer"},
    {"acquire", acquire, METH_NOARGS, "acquires ownership of the pointer"},
    {"own", reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(own)), METH_FASTCALL,
     "returns/sets ownership of the pointer"},
    {"append", append, METH_O, "appends another 'this' object"},
    {"next", next, METH_NOARGS, "returns the next 'this' object"},
    {nullptr, nullptr, 0, nullptr},
};

PyTypeObject make_type() noexcept {
    PyTypeObject type{};
    type.ob_base.ob_base.ob_refcnt = 1;
    type.tp_name = "SwigPyObject";
    type.tp_basicsize = sizeof(proxy_object);
    type.tp_dealloc = deallocate;
    type.tp_repr = represent;
    type.tp_flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC | Py_TPFLAGS_DISALLOW_INSTANTIATION;
    type.tp_doc = "A handle on an object of the module";
    type.tp_traverse = traverse;
    type.tp_clear = clear;
    type.tp_methods = methods;
    type.tp_free = PyObject_GC_Del;
    return type;
}

PyTypeObject own_type = make_type();

} // namespace

PyTypeObject* proxy_type() noexcept { return shared_type ? shared_type : &own_type; }

void ready_proxy_type() {
    if (!interned_this)
        interned_this = py_ref::checked(PyUnicode_InternFromString("this")).release();
    if (PyType_Ready(&own_type) < 0)
        throw python_error{};
}

void share_proxy_type(PyTypeObject* type) noexcept { shared_type = type; }

py_ref new_proxy(void* wrapped, const proxy_kind& kind) {
    auto* self = PyObject_GC_New(proxy_object, proxy_type());
    if (!self) {
        kind.destroy(wrapped);
        throw python_error{};
    }
    self->wrapped = wrapped;
    self->kind = &kind;
    self->owns = true;
    self->next = nullptr;
    PyObject_GC_Track(self);
    return py_ref::steal(reinterpret_cast<PyObject*>(self));
}

py_ref proxy_of(PyObject* object) noexcept {
    // An instance of a shadow class may wrap another one; a loop of them ends here.
    constexpr int deepest = 16;
    auto current = py_ref::borrow(object);
    for (int depth = 0; depth < deepest; ++depth) {
        if (Py_IS_TYPE(current.get(), proxy_type()))
            return current;
        auto inner = py_ref::steal(PyObject_GetAttr(current.get(), interned_this));
        if (!inner) {
            forget_answer();
            return {};
        }
        current = std::move(inner);
    }
    return {};
}

PyObject* this_name() noexcept { return interned_this; }

} // namespace mox
