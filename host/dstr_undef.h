// Ends one expansion of the enumeration definition files: removes the row macros so that
// the next expansion can define them its own way. Included once per expansion (no guard).
#undef DSTR_ENUM_BEGIN
#undef DSTR_INVALID
#undef DSTR_MEMBER
#undef DSTR_GENERIC
#undef DSTR_BOUND
#undef DSTR_ENUM_END
