#pragma once

#include <gio/gio.h>
#include <memory>

namespace tovrel::detail {

/// Frees what GLib hands out.
struct GLibDelete {
    void operator()(gchar* text) const { g_free(text); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
};

struct GObjectDelete {
    void operator()(gpointer object) const { g_object_unref(object); }
};

template <class T>
using GLibPointer = std::unique_ptr<T, GLibDelete>;

template <class T>
using GObjectPointer = std::unique_ptr<T, GObjectDelete>;

} // namespace tovrel::detail
