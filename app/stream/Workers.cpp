// Workers as copies of this process.

#include "stream/Workers.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <list>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Keltrix::App {

int MostWorkers() { return static_cast<int>(std::max(std::thread::hardware_concurrency(), 1u)); }

namespace {

// Texts travel after their length.
using Length = std::uint64_t;

// What a worker says first of a request: should it end, its end has to do with the request.
constexpr char HAS_BEGUN = '!';

// False where the other end is closed.
bool WriteFully(int descriptor, const char* bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = write(descriptor, bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool ReadFully(int descriptor, char* bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t got = read(descriptor, bytes, size);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        bytes += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

bool SendText(int descriptor, std::string_view text)
{
    const Length length = text.size();
    std::array<char, sizeof length> head;
    std::memcpy(head.data(), &length, sizeof length);
    return WriteFully(descriptor, head.data(), head.size()) && WriteFully(descriptor, text.data(), text.size());
}

// A worker's life. It ends without the destructors and the exit handlers of the process of which it is a copy.
[[noreturn]] void Serve(int requests, int replies, const Work& work)
{
    try {
        std::string request;
        std::string reply;
        Length length = 0;
        while (ReadFully(requests, reinterpret_cast<char*>(&length), sizeof length)) {
            request.resize(length);
            if (!ReadFully(requests, request.data(), request.size())) _exit(1);
            if (!WriteFully(replies, &HAS_BEGUN, 1)) _exit(1);
            reply.clear();
            work(request, reply);
            if (!SendText(replies, reply)) _exit(1);
        }
    } catch (...) {
        _exit(1);
    }
    _exit(0);
}

} // namespace

class Workers::Pool {
    struct Slot {
        enum State { Waiting, Running, Done, Lost } state = Waiting;
        std::string request;
        std::unique_ptr<char[]> reply; // a string would be filled with zeros first
        Length replyLength = 0;
        std::string end;        // of its last worker, where that ended
        int attempts = 0;       // workers that began with it and ended
        int futile = 0;         // workers that ended before they began with it
        bool isSuspect = false; // a worker ended that had begun with it, or with more of which it is a part
    };

    struct Worker {
        pid_t process = -1;
        int requests = -1;
        int replies = -1;
        Slot* slot = nullptr; // what it is at work on
        // HAS_BEGUN, the reply's length and its text, as far as they were received.
        std::array<char, 1 + sizeof(Length)> head{};
        std::size_t received = 0;
    };

public:
    Pool(int count, RequestSource& source, Work work) :
        m_count(static_cast<std::size_t>(count)), m_source(source), m_work(std::move(work))
    {}
    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;
    ~Pool()
    {
        for (Worker& worker : m_workers)
            Reap(worker, worker.slot != nullptr);
    }

    std::optional<WorkerReply> Next()
    {
        for (;;) {
            // Workers first: they go on while the replies are used.
            HandOut();
            if (auto reply = FirstReply()) return reply;
            if (m_slots.empty() && m_hasEnded) return std::nullopt;
            Wait();
        }
    }

private:
    static constexpr std::size_t SLOTS_PER_WORKER = 4;
    static constexpr int MOST_FUTILE = 16; // then something ends every worker before it can begin

    // Gives waiting requests to idle workers, and reads on until as many wait as there are workers: a worker that is done
    // finds the next request ready.
    void HandOut()
    {
        m_isLater = false;
        for (;;) {
            Slot* const slot = FirstWaiting();
            if (Worker* const worker = slot ? IdleWorker() : nullptr)
                Give(*slot, *worker);
            else if (slot && m_count == 0)
                return DoHere(*slot);
            else if (Waiting() >= Hands() || !ReadOn())
                return;
        }
    }

    void Give(Slot& slot, Worker& worker)
    {
        slot.state = Slot::Running;
        worker.slot = &slot;
        if (!SendText(worker.requests, slot.request)) Bury(worker);
    }

    // Does a request in this process, as there is no other. One with which a worker ended is left: it might end this one, too.
    void DoHere(Slot& slot)
    {
        slot.state = slot.isSuspect ? Slot::Lost : Slot::Done;
        if (slot.isSuspect) return;
        std::string reply;
        m_work(slot.request, reply);
        slot.replyLength = reply.size();
        slot.reply = std::make_unique_for_overwrite<char[]>(reply.size());
        std::copy(reply.begin(), reply.end(), slot.reply.get());
    }

    Slot* FirstWaiting()
    {
        const auto waiting =
            std::find_if(m_slots.begin(), m_slots.end(), [](const Slot& slot) { return slot.state == Slot::Waiting; });
        return waiting == m_slots.end() ? nullptr : &*waiting;
    }

    std::size_t Waiting() const
    {
        return static_cast<std::size_t>(std::count_if(m_slots.begin(), m_slots.end(),
                                                      [](const Slot& slot) { return slot.state == Slot::Waiting; }));
    }

    // How many processes do the work: this one where there is no worker.
    std::size_t Hands() const { return std::max<std::size_t>(m_count, 1); }

    // Whether one more request was available.
    bool ReadOn()
    {
        if (m_hasEnded || m_isLater || m_slots.size() >= SLOTS_PER_WORKER * Hands()) return false;
        Slot slot;
        switch (m_source.Next(slot.request, m_slots.empty())) {
        case RequestSource::Answer::Request:
            m_slots.push_back(std::move(slot));
            return true;
        case RequestSource::Answer::Later:
            m_isLater = true;
            return false;
        default:
            m_hasEnded = true;
            return false;
        }
    }

    // A worker without work; a new one where there are not as many as there may be.
    Worker* IdleWorker()
    {
        const auto idle =
            std::find_if(m_workers.begin(), m_workers.end(), [](const Worker& worker) { return !worker.slot; });
        if (idle != m_workers.end()) return &*idle;
        return m_workers.size() < m_count ? Start() : nullptr;
    }

    Worker* Start()
    {
        std::array<int, 2> requests{-1, -1};
        std::array<int, 2> replies{-1, -1};
        pid_t process = -1;
        if (pipe(requests.data()) == 0 && pipe(replies.data()) == 0) process = fork();
        if (process == 0) {
            // The ends that belong to the parent: while a copy is open, no worker would see that the parent has closed its own.
            close(requests[1]);
            close(replies[0]);
            for (const Worker& worker : m_workers) {
                close(worker.requests);
                close(worker.replies);
            }
            Serve(requests[0], replies[1], m_work);
        }
        const int reason = errno;
        Close(requests[0]);
        Close(replies[1]);
        if (process < 0) {
            Close(requests[1]);
            Close(replies[0]);
            m_count = m_workers.size(); // goes on with those there are
            m_told = "--jobs: " +
                     (m_count == 0 ? "no worker process can be started, the work is done in one process"
                                   : "only " + std::to_string(m_count) + " worker processes can be started") +
                     ": " + std::strerror(reason);
            return nullptr;
        }
        Widen(replies[0]);
        m_workers.push_back({process, requests[1], replies[0], nullptr, {}, 0});
        return &m_workers.back();
    }

    // Lets a worker write a whole reply and go on, where the system has pipes of more than the usual size. Nothing but speed
    // hangs on it.
    static void Widen([[maybe_unused]] int descriptor)
    {
#if defined(F_SETPIPE_SZ)
        constexpr int size = 1 << 20;
        static_cast<void>(fcntl(descriptor, F_SETPIPE_SZ, size));
#endif
    }

    static void Close(int descriptor)
    {
        if (descriptor >= 0) close(descriptor);
    }

    // Waits for the end of a worker whose pipes are closed, and says how it ended.
    static std::string Reap(const Worker& worker, bool isToBeKilled)
    {
        close(worker.requests);
        close(worker.replies);
        if (isToBeKilled) kill(worker.process, SIGKILL);
        int status = 0;
        while (waitpid(worker.process, &status, 0) < 0 && errno == EINTR) {
        }
        if (WIFSIGNALED(status)) return "killed by signal " + std::to_string(WTERMSIG(status));
        return "ended with exit code " + std::to_string(WEXITSTATUS(status));
    }

    // A worker died. A request that it had not begun goes to the next worker, a few times. Another is split and each part
    // retried; a single part is retried once, since another process may have exhausted the memory.
    void Bury(Worker& worker)
    {
        Slot* const slot = worker.slot;
        const bool hasBegun = worker.received > 0;
        slot->end = Reap(worker, false);
        m_workers.remove_if([&](const Worker& other) { return &other == &worker; });
        slot->state = Slot::Waiting;
        slot->reply.reset();
        if (!hasBegun) {
            if (++slot->futile > MOST_FUTILE) slot->state = Slot::Lost;
            return;
        }
        ++slot->attempts;
        slot->isSuspect = true;
        std::vector<std::string> parts = m_source.Parts(slot->request);
        if (parts.size() > 1)
            Replace(slot, std::move(parts));
        else if (slot->attempts > 1)
            slot->state = Slot::Lost;
    }

    void Replace(const Slot* slot, std::vector<std::string> parts)
    {
        const auto place =
            std::find_if(m_slots.begin(), m_slots.end(), [&](const Slot& other) { return &other == slot; });
        for (std::string& part : parts) {
            Slot alone;
            alone.request = std::move(part);
            alone.end = slot->end;
            alone.isSuspect = true;
            m_slots.insert(place, std::move(alone));
        }
        m_slots.erase(place);
    }

    // What is told, then the reply of the first request, where it is there.
    std::optional<WorkerReply> FirstReply()
    {
        WorkerReply reply;
        if (!m_told.empty()) {
            reply.kind = WorkerReply::Told;
            reply.how = std::exchange(m_told, {});
            return reply;
        }
        if (m_slots.empty()) return std::nullopt;
        Slot& first = m_slots.front();
        if (first.state != Slot::Done && first.state != Slot::Lost) return std::nullopt;
        if (first.state == Slot::Done) {
            reply.bytes = std::move(first.reply);
            reply.size = first.replyLength;
        } else {
            reply.kind = WorkerReply::Lost;
            reply.request = std::move(first.request);
            reply.how = std::move(first.end);
        }
        m_slots.pop_front();
        return reply;
    }

    // For a reply, or for more from the source where that said "later".
    void Wait()
    {
        std::vector<pollfd> waiting;
        std::vector<Worker*> workers;
        for (Worker& worker : m_workers) {
            if (!worker.slot) continue;
            waiting.push_back({worker.replies, POLLIN, 0});
            workers.push_back(&worker);
        }
        if (workers.empty()) return;
        if (m_isLater) waiting.push_back({m_source.Descriptor(), POLLIN, 0});
        if (poll(waiting.data(), static_cast<nfds_t>(waiting.size()), -1) < 0) return; // a signal: asked again
        for (std::size_t i = 0; i < workers.size(); ++i) {
            if (waiting[i].revents != 0) Receive(*workers[i]);
        }
    }

    void Receive(Worker& worker)
    {
        Slot& slot = *worker.slot;
        const std::size_t head = worker.head.size();
        const bool isInHead = worker.received < head;
        const ssize_t got = isInHead
                                ? read(worker.replies, worker.head.data() + worker.received, head - worker.received)
                                : read(worker.replies, slot.reply.get() + (worker.received - head),
                                       head + slot.replyLength - worker.received);
        if (got < 0 && errno == EINTR) return;
        if (got <= 0) return Bury(worker);
        worker.received += static_cast<std::size_t>(got);
        if (isInHead && worker.received == head) {
            std::memcpy(&slot.replyLength, worker.head.data() + 1, sizeof(Length));
            slot.reply = std::make_unique_for_overwrite<char[]>(slot.replyLength);
        }
        if (worker.received < head || worker.received < head + slot.replyLength) return;
        slot.state = Slot::Done;
        worker.slot = nullptr;
        worker.received = 0;
    }

    std::size_t m_count;
    RequestSource& m_source;
    const Work m_work;
    std::string m_told; // not yet
    std::list<Worker> m_workers;
    std::list<Slot> m_slots; // in the order in which they are put out
    bool m_hasEnded = false;
    bool m_isLater = false;
};

bool IsReadable(int descriptor)
{
    pollfd asked{descriptor, POLLIN, 0};
    return poll(&asked, 1, 0) != 0;
}

Workers::Workers(int count, RequestSource& source, Work work) :
    m_pool(std::make_unique<Pool>(count, source, std::move(work)))
{}

Workers::~Workers() = default;

std::optional<WorkerReply> Workers::Next() { return m_pool->Next(); }

} // namespace Keltrix::App
