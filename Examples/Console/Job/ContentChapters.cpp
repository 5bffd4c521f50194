#include "../Item.hpp"
#include "../Journal.hpp"
#include "Chapters.hpp"
#include "ProgressBar.hpp"

#include <Platform/Concurrency/MainActor.hpp>
#include <Platform/Concurrency/Start.hpp>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

using namespace tovrel;
using tovrel::testing::Fault;
using tovrel::testing::FaultPoint;

void readPages(Job& job) {
    job.begin("A list of the API, page by page, decoded into typed records");
    std::optional<std::string> next;
    do {
        const auto request = job.client.api().buildRequest("items", HttpMethod::get);
        request->setQueryParameter("limit", "20")->setQueryParameter("next", next);
        const auto page = get(job.client.api().executeEnvelope<std::vector<Item>>(request));
        job.printSent();
        journal::line(std::to_string(page.data->size()) + " items, from " + described(page.data->front()));
        next = page.meta.pagination->next;
    } while (next);
}

void downloadFile(Job& job) {
    job.begin("A file of 20 MB from the CDN, over a line of about 20 MB/s");
    job.servers.deployment().backEnd().inject(
        Fault::slowDrip(FaultPoint::responseBody, 400'000, std::chrono::milliseconds(20)));
    ProgressBar bar;
    const auto request = job.client.cdn().buildRequest("files/atlas.bin", HttpMethod::get);
    request->setProgressObserver([&bar](const URLProgress& progress) { bar.show(progress); });
    // Awaited where the progress is reported, so that nothing of it comes after the response.
    const WebResponse response = get(MainActor::run(job.client.cdn().execute(request)));
    job.printSent();
    const bool isIntact = response.data == Data(testing::generatedBytes(0, JobServers::fileSize));
    journal::line(std::to_string(response.statusCode) + ", " + std::to_string(response.data->size()) + " bytes, " +
                  (isIntact ? "each as it was sent" : "not what was sent"));
}
