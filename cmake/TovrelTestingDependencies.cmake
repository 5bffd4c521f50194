# What only Tovrel::Testing needs.
pkg_check_modules(LIBNGHTTP2 REQUIRED IMPORTED_TARGET libnghttp2)
