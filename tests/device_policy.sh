#!/usr/bin/env bash
# Asks the simulator on a bus with the rules of a system bus: everyone reads, only root and the
# service's user write.
#
# Usage: device_policy.sh POLICY DEVICE_SIMULATOR DEVICE_FILE
set -euo pipefail
work=$(mktemp -d)
bus_pid= simulator_pid=
trap 'kill $simulator_pid $bus_pid 2>/dev/null || true; wait; rm -rf "$work"' EXIT
chmod 755 "$work"
cp "$3" "$work/device.json"
cat >"$work/bus.conf" <<END
<busconfig>
  <type>system</type>
  <listen>unix:path=$work/bus</listen>
  <policy context="default">
    <allow user="*"/>
    <deny own="*"/>
    <deny send_type="method_call"/>
    <allow send_type="signal"/>
    <allow send_requested_reply="true" send_type="method_return"/>
    <allow send_requested_reply="true" send_type="error"/>
    <allow receive_type="method_call"/>
    <allow receive_type="method_return"/>
    <allow receive_type="error"/>
    <allow receive_type="signal"/>
    <allow send_destination="org.freedesktop.DBus"/>
  </policy>
  <include>$(realpath "$1")</include>
  <policy user="$(id -u)"><allow own="Device.DeviceManager"/></policy>
</busconfig>
END

export DBUS_SYSTEM_BUS_ADDRESS=unix:path=$work/bus TEXTMANAGER_BUS=system
exec {bus}< <(exec dbus-daemon --nofork --print-address --config-file="$work/bus.conf" 2>"$work/log")
bus_pid=$!
read -r -u "$bus"
exec {simulator}< <(exec "$2" "$work/device.json")
simulator_pid=$!
read -r -u "$simulator"

call() { # METHOD ARGUMENT...
    "${user[@]}" dbus-send --system --print-reply --dest=Device.DeviceManager /Configuration \
        Interface."$1" "${@:2}" 2>&1 || true
}
expect() { # PART_OF_THE_ANSWER ANSWER
    [[ $2 == *"$1"* ]] || { echo "device_policy: expected '$1', got: $2" >&2; exit 1; }
}
element=(string:DeviceSettings/DeviceSettings string:Language string:TextManager)

user=()
if [[ $(id -u) == 0 ]]; then
    expect "method return" "$(call Configuration.setConfigurationElementValue "${element[@]}" variant:string:fr_FR)"
    user=(setpriv --reuid=65534 --clear-groups)
fi
expect "string" "$(call Configuration.getConfigurationElementValue "${element[@]}")"
expect "boolean true" "$(call Configuration.getStatusDisplay)"
expect "AccessDenied" "$(call Configuration.setConfigurationElementValue "${element[@]}" variant:string:ja_JP)"
expect "AccessDenied" "$(call DeviceSimulator.announceConfigurationDataChange)"
