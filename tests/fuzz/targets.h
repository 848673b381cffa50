// What an input can be tried on. Each ends the process when something does not hold.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kiv::fuzz {

void FuzzArguments(const std::uint8_t* data, std::size_t size);
void FuzzBlocks(const std::uint8_t* data, std::size_t size);
void FuzzCheck(const std::uint8_t* data, std::size_t size);
void FuzzNames(const std::uint8_t* data, std::size_t size);
void FuzzNews(const std::uint8_t* data, std::size_t size);
void FuzzPictures(const std::uint8_t* data, std::size_t size);
void FuzzSettings(const std::uint8_t* data, std::size_t size);
void FuzzSite(const std::uint8_t* data, std::size_t size);
void FuzzTexts(const std::uint8_t* data, std::size_t size);
void FuzzWhy(const std::uint8_t* data, std::size_t size);

} // namespace kiv::fuzz
