#pragma once

#include "Job.hpp"

// The chapters of the job, in their order. Each prints what it did, which events arrived and where requests went.

/// A login without a user, for the application itself.
void logInAsClient(Job& job);

/// A list of the API in pages, decoded into records, and a large file of the CDN.
void readPages(Job& job);
void downloadFile(Job& job);

/// What happens when the access token is out of date.
void outliveToken(Job& job);

/// An identity token is exchanged for a login of the user, whose profile the server then has.
void signIn(Job& job);
void showProfile(Job& job);

/// What the server refuses: a request, and a login that it ended.
void meetDomainError(Job& job);
void loseLogin(Job& job);

/// The user leaves, for now and for good.
void logOut(Job& job);
void deleteAccount(Job& job);
