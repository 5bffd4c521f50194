// The one translation unit that holds Boost.Asio's compiled part.
#include <boost/asio/impl/src.hpp>
