// The entry points of the module that holds everything of libcurl. It is a library of its own, loaded when mail or HTTP
// is first used: linking libcurl costs every start of a program several times what a short order itself takes.
#pragma once

#include "host/FileHelper.h"
#include "host/NetworkServices.h"
#include "host/UserInterface.h"
#include "network/SmtpOptions.h"

extern "C" {

/// The caller owns the result and deletes it; null when there is no memory. References must outlive it.
using TolvanMakeHttpClient = tolvan::HttpClient*(const tolvan::Interruption& interruption);
using TolvanMakeMailService = tolvan::MailService*(const tolvan::SmtpOptions& options, tolvan::FileHelper& files,
                                                   const tolvan::Interruption& interruption);

TolvanMakeHttpClient tolvanMakeHttpClient;
TolvanMakeMailService tolvanMakeMailService;
}

namespace tolvan {

inline constexpr const char* networkModuleFile = "libtolvan_network.so";

}  // namespace tolvan
