// SPDX-License-Identifier: GPL-3.0-or-later
// Aravis' fake GigE Vision camera, which a test controls by lines on standard input: "drop" takes the control away
// from who has it, "silent" sends no more images, "loud" sends them again, "count" tells how many it has sent. Its end
// is the end of standard input.
//   fakeGigeCamera ADDRESS SIZE PERIOD_US LOSS [PACKET_BYTES]
// SIZE pixels wide and high, LOSS of all packets from 0 to 1. FAKE_GIGE_FEATURES in the environment is put into its
// description of features. Its serial number is "SN" and its address.
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include <arv.h>

namespace {

constexpr unsigned triggerMode = ARV_FAKE_CAMERA_REGISTER_TRIGGER_MODE + ARV_FAKE_CAMERA_REGISTER_FRAME_START_OFFSET;
constexpr unsigned packetSize = 0x0d04; ///< of the stream, IPv4 header and all; the same in every camera

/// Whether somebody listens on UDP port 3956 of this IPv4 address.
bool isBound(const std::string& address)
{
    unsigned bytes[4] = {};
    std::sscanf(address.c_str(), "%u.%u.%u.%u", bytes, bytes + 1, bytes + 2, bytes + 3);
    char wanted[32];
    std::snprintf(wanted, sizeof wanted, "%02X%02X%02X%02X:0F74", bytes[3], bytes[2], bytes[1], bytes[0]);
    std::ifstream sockets("/proc/net/udp");
    std::stringstream all;
    all << sockets.rdbuf();
    return all.str().find(wanted) != std::string::npos;
}

std::atomic<unsigned> framesSent{0};

/// One grey for all pixels: the library's own picture takes longer than sending it does.
void fillPlain(ArvBuffer* buffer, void* /*data*/, guint32 /*exposureUs*/, guint32 /*gain*/, ArvPixelFormat /*format*/)
{
    ++framesSent;
    size_t bytes = 0;
    auto* const pixels = static_cast<unsigned char*>(const_cast<void*>(arv_buffer_get_data(buffer, &bytes)));
    std::memset(pixels, static_cast<int>(arv_buffer_get_frame_id(buffer) % 256), bytes);
}

/// The library's own description of the camera with more features, which registers need not stand behind.
std::string descriptionWith(const char* features)
{
    ArvFakeCamera* const plain = arv_fake_camera_new("plain");
    size_t bytes = 0;
    const char* const description = arv_fake_camera_get_genicam_xml(plain, &bytes);
    std::string text(description, bytes);
    text.insert(text.find("</RegisterDescription>"), features);
    std::string file = g_get_tmp_dir() + std::string("/fakeGigeCamera.") + std::to_string(::getpid()) + ".xml";
    std::ofstream(file) << text;
    return file;
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 5 && count != 6)
        return 2;
    const char* const features = std::getenv("FAKE_GIGE_FEATURES");
    const std::string description = features ? descriptionWith(features) : std::string();
    ArvGvFakeCamera* camera = arv_gv_fake_camera_new_full(arguments[1], ("SN" + std::string(arguments[1])).c_str(),
                                                          features ? description.c_str() : nullptr);
    std::remove(description.c_str());
    ArvFakeCamera* registers = arv_gv_fake_camera_get_fake_camera(camera);
    const auto set = [registers](unsigned address, unsigned long value) {
        arv_fake_camera_write_register(registers, address, static_cast<guint32>(value));
    };
    set(ARV_FAKE_CAMERA_REGISTER_WIDTH, std::stoul(arguments[2]));
    set(ARV_FAKE_CAMERA_REGISTER_HEIGHT, std::stoul(arguments[2]));
    set(ARV_FAKE_CAMERA_REGISTER_ACQUISITION_FRAME_PERIOD_US, std::stoul(arguments[3]));
    set(packetSize, count > 5 ? std::stoul(arguments[5]) : 1400);
    arv_fake_camera_set_fill_pattern(registers, fillPlain, nullptr);
    g_object_set(camera, "gvsp-lost-ratio", std::stod(arguments[4]), nullptr);
    while (!isBound(arguments[1]))
        g_usleep(1000);
    std::cout << "ready" << std::endl;
    for (std::string line; std::getline(std::cin, line);) {
        if (line == "drop")
            arv_fake_camera_set_control_channel_privilege(registers, 0);
        else if (line == "count")
            std::cout << framesSent << std::endl;
        else if (line == "silent" || line == "loud")
            set(triggerMode, line == "silent" ? 1 : 0);
    }
    return 0;
}
