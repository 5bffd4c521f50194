#pragma once

#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/awaitable.hpp>
#include <boost/version.hpp>

#if BOOST_VERSION != 108100
#error                                                                                                                 \
    "TovrelWebServices was built with Boost 1.81: coroutines are part of its interface, so build the host with the same."
#endif

namespace tovrel {

/// An asynchronous operation that may fail. It starts when it is awaited (or handed to `start` or `get`) and resumes
/// its caller on the caller's own executor.
template <class T>
using Async = boost::asio::awaitable<T>;

/// Where an operation runs. Every executor of this library runs one step at a time.
using Executor = boost::asio::any_io_executor;

} // namespace tovrel
