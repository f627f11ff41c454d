// blend: mixes two or more IR files into one WAV file; needs no pedal.
#pragma once

#include "blend/Blend.h"
#include "cli/Command.h"
#include "cli/OutputFiles.h"
#include "cli/PrepareSwitches.h"
#include "json/Json.h"

#include <string>
#include <vector>

namespace cabslot {

class BlendCommand final : public Command {
public:
    BlendCommand(Arguments& program, CommonOptions& options);
    ExitStatus run() override;

private:
    struct Input {
        std::string path;
        Block block{};
        std::vector<std::string> steps; ///< of preparing
    };

    std::string readMix(const std::string& text);
    std::string whatIsWrong() const;
    std::string whyNot(const std::string& path, Input& input) const;
    std::vector<double> weights() const; ///< percent, one for each input
    std::vector<Polarity> polarities() const;
    std::vector<std::string> lines(const std::vector<Input>& inputs, const Blend& blend,
                                   const Mixed& mixed) const;
    std::string plotOf(const std::vector<Input>& inputs, const Blend& blend,
                       const Mixed& mixed) const;
    Json fieldsOf(const std::vector<Input>& inputs, const Blend& blend, const Mixed& mixed) const;
    void report(const std::vector<Input>& inputs, const Blend& blend, const Mixed& mixed) const;

    std::size_t inputCount() const { return files_.size() - 1; }
    const std::string& out() const { return files_.back(); }

    CommonOptions& common_;
    std::vector<std::string> files_; ///< the last one is written
    std::vector<double> mix_;
    std::string inverted_; ///< numbers of files, 1 for the first
    bool noAlign_ = false;
    bool prepares_ = false;
    PrepareSwitches switches_;
    std::string plotFile_;
    bool json_ = false;
};

} // namespace cabslot
