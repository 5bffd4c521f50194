// The one translation unit that holds the compiled part of Boost.Asio's TLS stream.
#include <boost/asio/detail/config.hpp>
#if defined(BOOST_ASIO_SEPARATE_COMPILATION)
#include <boost/asio/ssl/impl/src.hpp>
#endif
