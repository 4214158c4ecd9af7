#include "target.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <sys/resource.h>

// The mutation loop for compilers without libFuzzer, with the same arguments: `fuzz_NAME [-runs=N] [-seed=S]`.

namespace {

class Mutator
{
public:
    explicit Mutator(quint32 seed)
        : m_random(seed)
        , m_seeds(fuzzSeeds())
    {
    }

    QByteArray next()
    {
        QByteArray bytes = m_seeds.at(below(m_seeds.size()));
        for (int steps = 1 + below(4); steps > 0; --steps)
            mutate(bytes);
        return bytes;
    }

private:
    int below(int bound) { return bound > 0 ? m_random.bounded(bound) : 0; }

    void mutate(QByteArray &bytes)
    {
        const int at = below(bytes.size());
        switch (below(9)) {
        case 0:
            if (!bytes.isEmpty())
                bytes[at] = char(bytes.at(at) ^ (1 << below(8)));
            break;
        case 1:
            if (!bytes.isEmpty())
                bytes[at] = char(below(256));
            break;
        case 2:
            overwriteNumber(bytes, at);
            break;
        case 3:
            bytes.insert(at, char(below(256)));
            break;
        case 4:
            bytes.remove(at, 1 + below(8));
            break;
        case 5:
            bytes.insert(at, bytes.mid(below(bytes.size()), below(32)));
            break;
        case 6:
            bytes.truncate(at);
            break;
        case 7: {
            const QByteArray &other = m_seeds.at(below(m_seeds.size()));
            bytes = bytes.left(at) + other.mid(below(other.size()));
            break;
        }
        default:
            bytes.append(QByteArray(below(64), char(below(256))));
        }
    }

    /// Writes a number as four big-endian bytes, like counts and lengths, or as digits.
    void overwriteNumber(QByteArray &bytes, int at)
    {
        static const quint32 numbers[] = {0,          1,          0x7F,       0xFF,       0xFFFF,     0x10000000,
                                          0x20000000, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFE, 0xFFFFFFFF, 0x40000001};
        const quint32 number = numbers[below(int(std::size(numbers)))];
        const char binary[] = {char(number >> 24), char(number >> 16), char(number >> 8), char(number)};
        if (below(2))
            bytes.replace(at, 4, binary, 4);
        else
            bytes.replace(at, 1 + below(4), QByteArray::number(number));
    }

    QRandomGenerator m_random;
    QVector<QByteArray> m_seeds;
};

qint64 option(int argc, char **argv, const char *name, qint64 otherwise)
{
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], name, std::strlen(name)) == 0)
            return std::atoll(argv[i] + std::strlen(name));
    }
    return otherwise;
}

} // namespace

int main(int argc, char **argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    const qint64 runs = option(argc, argv, "-runs=", 100000);
    Mutator mutator(quint32(option(argc, argv, "-seed=", 1)));
    QElapsedTimer clock;
    clock.start();
    for (const QByteArray &seed : fuzzSeeds()) {
        const qint64 before = fuzz::accepted;
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(seed.constData()), size_t(seed.size()));
        fuzz::require(fuzz::accepted == before + 1, "a valid input is accepted");
    }
    for (qint64 run = 0; run < runs; ++run) {
        const QByteArray bytes = mutator.next();
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.constData()), size_t(bytes.size()));
    }
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%lld mutated inputs in %.1f s, accepted %lld, peak memory %ld MB\n", static_cast<long long>(runs),
                double(clock.elapsed()) / 1000, static_cast<long long>(fuzz::accepted - fuzzSeeds().size()),
                usage.ru_maxrss / 1024);
    return 0;
}
