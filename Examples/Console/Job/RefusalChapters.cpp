#include "../Journal.hpp"
#include "Chapters.hpp"

#include <Platform/Concurrency/Start.hpp>

#include <exception>
#include <string>

using namespace tovrel;

void meetDomainError(Job& job) {
    job.begin("A resource that the API does not have: an error in the server's own words");
    try {
        get(job.client.api().execute(job.client.api().buildRequest("nowhere", HttpMethod::get)));
        journal::line("the API has it after all");
    } catch (const TovrelDomainServiceError& error) {
        job.printSent();
        journal::line("✗ status " + std::to_string(error.statusCode()) + ", code \"" + error.code() +
                      "\": " + error.message());
    }
}

void loseLogin(Job& job) {
    job.begin("The server has ended the login: a 401 logs out");
    job.servers.deployment().accounts().endSessions();
    std::exception_ptr failure;
    try {
        get(job.client.api().execute(job.client.api().buildRequest("items", HttpMethod::get)));
    } catch (const Error&) {
        failure = std::current_exception();
    }
    job.printSent();
    journal::line(failure && isSignedOut(failure) ? "✗ the login is over, the user has to sign in again"
                                                  : "the login is still good");
}
