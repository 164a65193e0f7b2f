#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Keltrix::App {

/// Where workers' requests come from. Requests and replies are bytes; what they mean is between the source, the work and
/// the one who takes the replies.
class RequestSource {
public:
    virtual ~RequestSource() = default;
    enum class Answer {
        Request, ///< there is one
        Later,   ///< not before the descriptor can be read
        End      ///< there is none any more
    };
    /// The next request. `Later` is an answer only where the caller may not wait.
    virtual Answer Next(std::string& request, bool mayWait) = 0;
    /// The descriptor from which more will come after `Later`.
    virtual int Descriptor() const = 0;
    /// The parts of a request, to be tried one by one after the worker that had it ended; one or none where it cannot be
    /// taken apart.
    virtual std::vector<std::string> Parts(std::string_view request) const = 0;
};

/// Whether a read would return without blocking (data or end of file).
bool IsReadable(int descriptor);

/// As many as the processors that this process may use.
int MostWorkers();

/// What a worker does: appends the reply to an empty text, which keeps its memory from one request to the next.
using Work = std::function<void(std::string_view request, std::string& reply)>;

/// What became of a request.
struct WorkerReply {
    enum Kind {
        Done,
        Lost, ///< workers ended twice with the request alone, or it cannot be tried again, as no other process can be started
        Told ///< of no request: fewer processes than asked for can be started, and why
    };
    Kind kind = Done;
    std::unique_ptr<char[]> bytes; ///< of the reply; a string would be filled with zeros first
    std::size_t size = 0;
    std::string request; ///< that was lost
    /// The last worker ended with it: "killed by signal 9", "unable to go on: no memory"; or what is told.
    std::string how;

    std::string_view Text() const { return {bytes.get(), size}; }
};

/// Has requests turned into replies by `work` in `count` processes at once, which are copies of this one. Replies come in
/// the order of the requests. At most a few requests for each worker are under way or wait for an earlier one, so that memory
/// does not grow with their number. A worker that ends is replaced; a request that it had not yet begun is given to another.
/// Where no process can be started the work is done in this one, except for requests with which a worker ended. SIGPIPE must be ignored: a worker
/// may end while a request is sent to it.
///
/// On Windows workers are threads, and work that throws takes the place of a worker that ends. What would end a process ends this one.
class Workers {
public:
    /// The source must outlive the workers.
    Workers(int count, RequestSource& source, Work work);
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    ~Workers();

    /// The next reply; nothing after the last one.
    std::optional<WorkerReply> Next();

private:
    class Pool;
    std::unique_ptr<Pool> m_pool;
};

} // namespace Keltrix::App
