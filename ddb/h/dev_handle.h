// DEV_HANDLE<BODY>: the public handle of a data class. A handle holds exactly one pointer to
// its body, which it owns: the destructor destroys the body. Reads go to the body; writing is
// done on the body (get_body()), so that only loaders and parsers modify data.
//
// The handle forwards the typed attribute reads of every kind its body declares (the body's
// DEV_ATTRIBUTE_TABLE): is_valid_<k>_enum(key), the reporting get_<k>_data(key) and the
// non-reporting get_<k>_data(key, value*). Without a body, is_valid_* and the
// non-reporting reads answer false; a reporting read reports the missing body and returns
// the kind's default.
//
// The reports are worded per class through WORDING: `constructed_without_body` when the
// handle is built from a null pointer, `read_without_body` when a read finds no body.
//
//   class DEV_BASIC_INFO : public DEV_HANDLE<DEV_BASIC_INFO_BODY> { ... };
#ifndef VELCORA_DEV_HANDLE_H
#define VELCORA_DEV_HANDLE_H

#include "dev_export.h"

#include <type_traits>
#include <utility>

#include "dev_attribute_table.h"
#include "dev_persistent.h"

// Reports a handle's missing body (the reports name the source unit ddb/dev/dev_handle).
DEV_EXPORT void dev_handle_report(const char* text);

// The usual wording of the two reports.
struct DEV_EXPORT DEV_HANDLE_WORDING {
    static constexpr const char* constructed_without_body = "body != 0";
    static constexpr const char* read_without_body = "m_body != 0";
};

// The forwarded reads of one key enumeration; HANDLE gives the body (CRTP).
template <ASTR_KIND KIND, typename HANDLE, typename KEY>
class DEV_HANDLE_READS;

#define DEV_HANDLE_KIND_READS(KIND, k)                                                                  \
    template <typename HANDLE, typename KEY>                                                            \
    class DEV_HANDLE_READS<KIND, HANDLE, KEY> {                                                         \
        typedef typename DEV_ATTRIBUTE_ACCESS<KIND>::value_type VALUE;                                  \
                                                                                                        \
    public:                                                                                             \
        bool is_valid_##k##_enum(KEY key) const {                                                       \
            const auto* body = self().get_body();                                                       \
            return body && body->is_valid_##k##_enum(key);                                              \
        }                                                                                               \
        decltype(auto) get_##k##_data(KEY key) const {                                                  \
            const auto* body = self().body_to_read();                                                   \
            return body ? body->get_##k##_data(key) : dev_attribute_default<VALUE>();                   \
        }                                                                                               \
        bool get_##k##_data(KEY key, VALUE* value) const {                                              \
            const auto* body = self().get_body();                                                       \
            return body && body->get_##k##_data(key, value);                                            \
        }                                                                                               \
                                                                                                        \
    private:                                                                                            \
        const HANDLE& self() const { return static_cast<const HANDLE&>(*this); }                        \
    };

DEV_HANDLE_KIND_READS(ASTR_KIND_BOOL, bool)
DEV_HANDLE_KIND_READS(ASTR_KIND_INT, int)
DEV_HANDLE_KIND_READS(ASTR_KIND_ENUM, enum)
DEV_HANDLE_KIND_READS(ASTR_KIND_STRING, string)
DEV_HANDLE_KIND_READS(ASTR_KIND_2D_INT, 2d_int)
DEV_HANDLE_KIND_READS(ASTR_KIND_VEC_INT, vec_int)
DEV_HANDLE_KIND_READS(ASTR_KIND_VEC_DOUBLE, vec_double)
DEV_HANDLE_KIND_READS(ASTR_KIND_VEC_STRING, vec_string)
#undef DEV_HANDLE_KIND_READS

// The reads of every key enumeration of a body.
template <typename HANDLE, typename KEYS>
class DEV_HANDLE_ALL_READS;
template <typename HANDLE, typename... KEYS>
class DEV_HANDLE_ALL_READS<HANDLE, DEV_ATTRIBUTE_KEY_LIST<KEYS...>>
    : public DEV_HANDLE_READS<ASTR_KEY_TRAITS<KEYS>::kind, HANDLE, KEYS>... {};

template <typename BODY, typename WORDING = DEV_HANDLE_WORDING>
class DEV_HANDLE : public DEV_HANDLE_ALL_READS<DEV_HANDLE<BODY, WORDING>, typename BODY::attribute_keys> {
public:
    typedef BODY body_type;

    // Takes ownership of `body`; a null body is reported, and the handle is built anyway.
    explicit DEV_HANDLE(BODY* body) : m_body(body) {
        if (!body) dev_handle_report(WORDING::constructed_without_body);
    }
    ~DEV_HANDLE() {
        delete m_body;
        m_body = nullptr;
    }
    DEV_HANDLE(const DEV_HANDLE&) = delete;
    DEV_HANDLE& operator=(const DEV_HANDLE&) = delete;

    BODY* get_body() const { return m_body; }
    // Destroys the current body and takes `body` in its place.
    void set_body(BODY* body) {
        if (body == m_body) return;
        delete m_body;
        m_body = body;
    }
    // The body for a read; null, after the missing-body report, when there is none.
    const BODY* body_to_read() const {
        if (!m_body) dev_handle_report(WORDING::read_without_body);
        return m_body;
    }
    // The same for a write.
    BODY* body_to_write() {
        if (!m_body) dev_handle_report(WORDING::read_without_body);
        return m_body;
    }

    // Calls a read-only member of the body. Without a body: the missing-body report, then
    // `fallback` (forward_or) or the result type's empty value (forward: null, 0, an empty
    // string or list).
    template <typename RESULT, typename... PARAMS, typename... ARGS>
    RESULT forward_or(const std::remove_reference_t<RESULT>& fallback, RESULT (BODY::*method)(PARAMS...) const,
                      ARGS&&... args) const {
        const BODY* body = body_to_read();
        return body ? (body->*method)(std::forward<ARGS>(args)...) : fallback;
    }
    template <typename RESULT, typename... PARAMS, typename... ARGS>
    RESULT forward(RESULT (BODY::*method)(PARAMS...) const, ARGS&&... args) const {
        return forward_or(dev_attribute_default<std::decay_t<RESULT>>(), method, std::forward<ARGS>(args)...);
    }

protected:
    // A handle without a body yet (for handles whose loader creates it, and for the
    // persistent store, which reads the body).
    DEV_HANDLE() : m_body(nullptr) {}

    BODY* m_body;

private:
    template <typename HANDLE>
    friend struct DEV_PDB_HANDLE_ACCESS;
};

// The typed setters of the body, for the handles that expose them (most handles leave
// writing to the body): each stores through the body, or reports the missing body.
//
//   class DEV_PART_INFO : public DEV_HANDLE<DEV_PART_INFO_BODY>, public DEV_HANDLE_SETTERS<DEV_PART_INFO> { ... };
template <typename HANDLE>
class DEV_HANDLE_SETTERS {
public:
    template <typename KEY, typename V>
    void set_bool_data(KEY key, V&& value) {
        write([&](auto& body) { body.set_bool_data(key, std::forward<V>(value)); });
    }
    template <typename KEY, typename V>
    void set_int_data(KEY key, V&& value) {
        write([&](auto& body) { body.set_int_data(key, std::forward<V>(value)); });
    }
    template <typename KEY, typename V>
    void set_enum_data(KEY key, V&& value) {
        write([&](auto& body) { body.set_enum_data(key, std::forward<V>(value)); });
    }
    template <typename KEY, typename V>
    void set_string_data(KEY key, V&& value) {
        write([&](auto& body) { body.set_string_data(key, std::forward<V>(value)); });
    }
    template <typename KEY, typename V>
    void set_2d_int_data(KEY key, V&& value) {
        write([&](auto& body) { body.set_2d_int_data(key, std::forward<V>(value)); });
    }

private:
    template <typename WRITE>
    void write(WRITE&& store) {
        if (auto* body = static_cast<HANDLE&>(*this).body_to_write()) store(*body);
    }
};

#endif
