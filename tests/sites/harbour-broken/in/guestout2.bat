ftpput -s local:c:/marina/index.htm -d marina:/public/index.htm
