#pragma once

namespace quenvolta
{

/// The services of the server.
enum class ServerService {
    Http,
    Qdfs,
};

enum class ServiceAction {
    Start,
    Stop,
};

/// One thing to be done to a service.
struct ServiceOperation {
    ServiceAction action;
    ServerService service;

    bool operator==(const ServiceOperation&) const = default;
};

} // namespace quenvolta
