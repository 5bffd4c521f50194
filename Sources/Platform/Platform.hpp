#pragma once

/// Everything of `Tovrel::Platform`.

#include <Platform/Coding/JSONDecoder.hpp>
#include <Platform/Coding/JSONEncoder.hpp>
#include <Platform/Coding/TextEncoding.hpp>
#include <Platform/Concurrency/Actor.hpp>
#include <Platform/Concurrency/Cancellation.hpp>
#include <Platform/Concurrency/CancellationError.hpp>
#include <Platform/Concurrency/Clock.hpp>
#include <Platform/Concurrency/Event.hpp>
#include <Platform/Concurrency/Hop.hpp>
#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/SharedTask.hpp>
#include <Platform/Concurrency/Start.hpp>
#include <Platform/Concurrency/TaskGroup.hpp>
#include <Platform/Concurrency/TaskPool.hpp>
#include <Platform/System/Bundle.hpp>
#include <Platform/System/FatalError.hpp>
#include <Platform/System/Logger.hpp>
#include <Platform/URLLoading/HTTPURLResponse.hpp>
#include <Platform/URLLoading/PercentEncoding.hpp>
#include <Platform/URLLoading/URLComponents.hpp>
#include <Platform/URLLoading/URLError.hpp>
#include <Platform/URLLoading/URLSession.hpp>
