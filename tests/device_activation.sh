#!/usr/bin/env bash
# Asks for the simulator on a bus that starts it by the service file that is shipped. A bus of the
# system starts it by systemd, as its own user; this one, a session's, does it itself.
#
# Usage: device_activation.sh SERVICE_FILE_TEMPLATE DEVICE_SIMULATOR DEVICE_FILE
set -euo pipefail
work=$(mktemp -d)
bus_pid=
trap 'kill $bus_pid 2>/dev/null || true; wait; rm -rf "$work"' EXIT
cp "$3" "$work/device.json"
mkdir "$work/services"
sed -e "s|@CMAKE_INSTALL_FULL_BINDIR@/device-simulator|$2|" -e "s|@state_file@|$work/device.json|" "$1" \
    >"$work/services/Device.DeviceManager.service"
cat >"$work/bus.conf" <<END
<busconfig>
  <type>session</type>
  <listen>unix:path=$work/bus</listen>
  <servicedir>$work/services</servicedir>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
END

export DBUS_SESSION_BUS_ADDRESS=unix:path=$work/bus TEXTMANAGER_BUS=session
exec {bus}< <(exec dbus-daemon --nofork --print-address --config-file="$work/bus.conf" 2>"$work/log")
bus_pid=$!
read -r -u "$bus"

answer=$(dbus-send --session --print-reply --dest=Device.DeviceManager /Configuration \
    Interface.Configuration.getConfigurationElementValue \
    string:DeviceSettings/DeviceSettings string:Language string:TextManager 2>&1) || true
if [[ $answer != *variant*string* ]]; then
    echo "device_activation: it was not started: $answer" >&2
    cat "$work/log" >&2
    exit 1
fi
