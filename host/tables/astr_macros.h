// Token helpers of the attribute-key expansions (host/tables/astr_expand_*.inc). The
// current record and kind are given by four macros set in astr_record_kinds.inc:
//   ASTR_R  record, upper case (DEV_PAD_INFO)     ASTR_r  the same, lower case (dev_pad_info)
//   ASTR_K  kind, upper case (2D_INT)             ASTR_k  the same, lower case (2d_int)
// A key row of a definition file is ASTR_KEY(NAME, "user string", VALUES): NAME is the
// key without record and kind (DEFAULT_IO_STANDARD); VALUES says which enumeration names
// its values: ASTR_NUMBERS (none), ASTR_ENUM(stem) (the enumeration dstr_table_<stem>()
// for the whole key, and for every element of a 2D or vector key), ASTR_COLUMN(c, stem)
// (only column c of a 2D key, or position c of a vector key), ASTR_ROW(r, stem) (only
// row r of a 2D key). Each definition ends with ASTR_KEY_COUNT(n), its key count, and an
// ASTR_KEY_AT(NAME, position) row for each key whose position the code relies on; both are
// checked at compile time.
#ifndef VELCORA_HOST_TABLES_ASTR_MACROS_H
#define VELCORA_HOST_TABLES_ASTR_MACROS_H

#define ASTR_STR_(x) #x
#define ASTR_STR(x) ASTR_STR_(x)
#define ASTR_CAT2_(a, b) a##_##b
#define ASTR_CAT2(a, b) ASTR_CAT2_(a, b)
#define ASTR_CAT3_(a, b, c) a##_##b##_##c
#define ASTR_CAT3(a, b, c) ASTR_CAT3_(a, b, c)
#define ASTR_FN_(pre, r, k, post) pre##r##_##k##post
#define ASTR_FN(pre, r, k, post) ASTR_FN_(pre, r, k, post)
#define ASTR_DEF_FILE_(r, k) host/tables/r##_##k##_data.def
#define ASTR_DEF_PATH(r, k) ASTR_DEF_FILE_(r, k)

// DEV_<R>_<K>_<NAME>, DEV_<R>_<K>_DATA_ENUM, DEV_<R>_<K>_DATA_MAX, <K>_<NAME>
#define ASTR_MEMBER(name) ASTR_CAT3(ASTR_R, ASTR_K, name)
#define ASTR_ENUM_TYPE ASTR_CAT3(ASTR_R, ASTR_K, DATA_ENUM)
#define ASTR_MAX_ID ASTR_CAT3(ASTR_R, ASTR_K, DATA_MAX)
#define ASTR_KEY_STRING(name) ASTR_STR(ASTR_CAT2(ASTR_K, name))
#define ASTR_KIND_ID ASTR_CAT2(ASTR_KIND, ASTR_K)
// <pre>dev_<r>_<k><post>, e.g. astr_exists_dev_pad_bool_data_enum_by_string
#define ASTR_FN_NAME(pre, post) ASTR_FN(pre, ASTR_r, ASTR_k, post)
// "host/tables/dev_<r>_<k>_data.def"
#define ASTR_DEF_FILE ASTR_STR(ASTR_DEF_PATH(ASTR_r, ASTR_k))

#endif
