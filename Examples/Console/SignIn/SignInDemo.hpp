#pragma once

/// A user signs in with a browser: the page, the relay, the port of this machine, the accounts token.
void demonstrateSignIn();
